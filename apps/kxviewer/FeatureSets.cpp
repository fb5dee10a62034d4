// SPDX-License-Identifier: Apache-2.0
#include "FeatureSets.h"

#include "ViewerSettings.h"

#include <KxApi_TL/IKxInterface.h>

#include <QDir>
#include <QFileInfo>
#include <QUrl>

QString FeatureSetFile(const KxApi::IKxDeviceInfo& camera, FeatureSetKey eKey)
{
    const auto text = [](const GenICam::gcstring& strText) { return QString::fromUtf8(strText.c_str()); };
    // A camera may be called anything; model and vendor tell it from another maker's of the same number.
    QString strName = text(camera.GetVendor()) + "_" + text(camera.GetModel());
    if (eKey == FeatureSetKey::Serial) {
        const QString strSerial = text(camera.GetSerialNumber());
        strName += "_" + (strSerial.isEmpty() ? text(camera.GetID()) : strSerial);
    }
    const QString strSafe = QString::fromLatin1(QUrl::toPercentEncoding(strName, " ")).replace(' ', '_');
    return QFileInfo(ViewerSettings::File()).dir().filePath("features/" + strSafe + ".txt");
}

QString FindFeatureSet(const KxApi::IKxDeviceInfo& camera)
{
    for (const FeatureSetKey eKey : {FeatureSetKey::Serial, FeatureSetKey::Model}) {
        QString strFile = FeatureSetFile(camera, eKey);
        if (QFileInfo::exists(strFile))
            return strFile;
    }
    return {};
}
