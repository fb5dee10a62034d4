// SPDX-License-Identifier: Apache-2.0
#include "entry/WindowTypes_qt.h"
#include "graph/KxDisplayGraphWnd_qt.h"
#include "image/KxDisplayImageWnd_qt.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCCheckRange.h>
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_TL/KxApi_TL.h>

#include <QApplication>
#include <QThread>

namespace KxApi
{
namespace
{

void NeedApp()
{
    if (!theApp)
        theApp = new CKxApi_GUIApp(0, nullptr);
}

/// Calls of processEventGUI within each other.
class CNesting
{
public:
    CNesting() { ++s_nDepth; }
    CNesting(const CNesting&) = delete;
    CNesting& operator=(const CNesting&) = delete;
    ~CNesting() { --s_nDepth; }
    bool IsOutermost() const { return s_nDepth == 1; }

private:
    static thread_local int s_nDepth;
};
thread_local int CNesting::s_nDepth = 0;

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
    KXGC_CHECK_RANGE(rlBelowMax, "CreateIKxWnd", static_cast<uint32_t>(eType), kWindowTypes);
    return GenICam::GuardBadAlloc([eType] {
        NeedApp();
        return MakeWindow(eType);
    });
}

IKxWndReleasable* CreateIKxImageDisplayWnd(IKxAllocator* pAllocator)
{
    CheckKxApiInitialized();
    return new CKxDisplayImageWnd(pAllocator);
}

IKxWndReleasable* CreateIKxGraphDisplayWnd(IKxSpecificTypeAllocator* pAllocator)
{
    CheckKxApiInitialized();
    return new CKxDisplayGraphWnd(pAllocator);
}

int processEventGUI(bool bExec, unsigned int nMaxTime)
{
    NeedApp();
    if (bExec)
        return QApplication::exec();
    const CNesting nesting;
    if (nMaxTime == 0)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    else
        QCoreApplication::processEvents(QEventLoop::AllEvents, static_cast<int>(qMin(nMaxTime, 0x7FFFFFFFU)));
    // An event loop would do this between two events, but for what was asked for outside of one. Within
    // another loop or call it is left to that, since the object may have its code on the stack.
    if (nesting.IsOutermost() && QThread::currentThread()->loopLevel() == 0)
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}

} // namespace KxApi

void* GetModuleHandleGUI() { return KxApi::CKxApi_GUIApp::getHandle(); }
