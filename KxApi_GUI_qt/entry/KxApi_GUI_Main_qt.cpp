// SPDX-License-Identifier: Apache-2.0
#include "frame/WindowTypes_qt.h"
#include "image/KxDisplayImageWnd_qt.h"

#include <Base/GCBadAlloc.h>
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_TL/KxApi_TL.h>

#include <QApplication>

namespace KxApi
{
namespace
{

void NeedApp()
{
    if (!theApp)
        theApp = new CKxApi_GUIApp(0, nullptr);
}

} // namespace

CKxApi_GUIApp* theApp = nullptr;

CKxApi_GUIApp::CKxApi_GUIApp(int argc, char** argv)
    : m_argc(argc)
    , m_argv(argv)
{
    qInitResources_KxSDKApi_GUI_qt_resource();
    if (QCoreApplication::instance()) {
        m_bIsQtHost = true;
        return;
    }
    new QApplication(m_argc, m_argv, QT_VERSION); // lives as long as the process
    m_bMadeApplication = true;
}

CKxApi_GUIApp::~CKxApi_GUIApp() { qCleanupResources_KxSDKApi_GUI_qt_resource(); }

void* CKxApi_GUIApp::getHandle() { return QCoreApplication::instance(); }

IKxWndReleasable* CreateIKxWnd(_EKxWindowType_t eType)
{
    CheckKxApiInitialized();
    if (static_cast<uint32_t>(eType) >= kWindowTypes)
        throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be smaller than Max = %lld", "CreateIKxWnd",
                                     static_cast<long long>(static_cast<uint32_t>(eType)),
                                     static_cast<long long>(kWindowTypes));
    NeedApp();
    return GenICam::GuardBadAlloc([eType] { return MakeWindow(eType); });
}

IKxWndReleasable* CreateIKxImageDisplayWnd(IKxAllocator* pAllocator)
{
    CheckKxApiInitialized();
    return new CKxDisplayImageWnd(pAllocator);
}

IKxWndReleasable* CreateIKxGraphDisplayWnd(IKxSpecificTypeAllocator*)
{
    CheckKxApiInitialized();
    return MakeWindow(KxWindowType_GraphDisplay);
}

int processEventGUI(bool bExec, unsigned int nMaxTime)
{
    NeedApp();
    if (bExec)
        return QApplication::exec();
    if (nMaxTime == 0)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    else
        QCoreApplication::processEvents(QEventLoop::AllEvents, static_cast<int>(qMin(nMaxTime, 0x7FFFFFFFU)));
    return 0;
}

} // namespace KxApi

void* GetModuleHandleGUI() { return KxApi::CKxApi_GUIApp::getHandle(); }
