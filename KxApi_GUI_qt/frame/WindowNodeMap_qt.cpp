// SPDX-License-Identifier: Apache-2.0
#include "frame/WindowNodeMap_qt.h"

#include <QFile>
#include <QTextStream>

namespace KxApi
{
namespace
{

struct CResourceRow
{
    int nID;
    const char* szPath;
};

constexpr CResourceRow kResources[] = {
    {KxXMLResource_NodeMap, ":/xmls/Kestrix_Wnd_NodeMap_Rev1.xml"},
    {KxXMLResource_DisplayImage, ":/xmls/Kestrix_Wnd_DisplayImage_Rev1.xml"},
    {KxXMLResource_DeviceSelection, ":/xmls/Kestrix_Wnd_DeviceSelection_Rev1.xml"},
    {KxXMLResource_DisplayGraph, ":/xmls/Kestrix_Wnd_DisplayGraph_Rev1.xml"},
};

const char* ResourcePath(int nID)
{
    for (const CResourceRow& row : kResources) {
        if (row.nID == nID)
            return row.szPath;
    }
    return nullptr;
}

} // namespace

bool LoadWindowNodeMap(GenApi::CNodeMapRef& objNodeMapRef, int nXMLResourceID, GenApi::IPort* pPort,
                       const char* szPortName)
{
    const char* const szPath = ResourcePath(nXMLResourceID);
    if (!szPath)
        return false;
    QFile file(szPath);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    objNodeMapRef._LoadXMLFromString(stream.readAll().toStdString().c_str());
    objNodeMapRef._Connect(pPort, szPortName);
    return true;
}

} // namespace KxApi
