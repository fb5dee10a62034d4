// SPDX-License-Identifier: Apache-2.0
// Makes windows, and keeps them alive in programs without an event loop of their own.
#pragma once

#include <Base/GCException.h>
#include <KxApi_GUI/IKxDeviceSelectionWnd.h>
#include <KxApi_GUI/IKxGraphDisplayWnd.h>
#include <KxApi_GUI/IKxImageDisplayWnd.h>
#include <KxApi_GUI/IKxNodeMapDisplayWnd.h>
#include <KxApi_GUI/IKxWnd.h>
#include <KxApi_GUI/IKxWndCallback.h>
#include <KxApi_GUI/KxApi_GUILinkage.h>

namespace KxApi
{

struct IKxAllocator;
struct IKxSpecificTypeAllocator;

/// The process as the library found it. Made at the first need and never destroyed.
class KXAPI_GUI_API CKxApi_GUIApp
{
public:
    /// Registers the library's resources, and makes a QApplication unless the process has an application
    /// object.
    CKxApi_GUIApp(int argc, char** argv);
    CKxApi_GUIApp(const CKxApi_GUIApp&) = delete;
    CKxApi_GUIApp& operator=(const CKxApi_GUIApp&) = delete;
    ~CKxApi_GUIApp();

    /// The process's QCoreApplication, null when there is none. Any thread.
    static void* getHandle();

private:
    bool m_bIsQtHost = false;
    bool m_bMadeApplication = false;
    int m_argc; // kept here because QApplication holds a reference to it
    char** m_argv;
};

/// Null until the first CreateIKxWnd or processEventGUI.
extern KXAPI_GUI_API CKxApi_GUIApp* theApp;

/// Makes a window, which isn't shown yet; the caller gives it back by Release.
///
/// The first call of this or of processEventGUI settles the GUI thread: that of the process's QApplication,
/// or where there is none, the calling one, for which a QApplication is made. It has to be one call in one
/// thread; later ones may come from any. Raises LogicalErrorException when the SDK isn't started,
/// OutOfRangeException for a type that there isn't, BadAllocException.
KXAPI_GUI_API IKxWndReleasable* CreateIKxWnd(_EKxWindowType_t eType);

/// Makes an image window whose images lie in memory from the allocator, which the window doesn't own and
/// which has to outlive it; null for the process's own memory. An application object has to be there already,
/// by a QApplication of the program's own, CreateIKxWnd or processEventGUI. Raises LogicalErrorException when
/// the SDK isn't started, std::bad_alloc.
KXAPI_GUI_API IKxWndReleasable* CreateIKxImageDisplayWnd(IKxAllocator* pAllocator);

/// The same for a graph window, which needs an application object only when it is shown. Raises
/// LogicalErrorException when the SDK isn't started, std::bad_alloc.
KXAPI_GUI_API IKxWndReleasable* CreateIKxGraphDisplayWnd(IKxSpecificTypeAllocator* pAllocator);

/// Handles the events of the windows, for programs whose GUI thread has no Qt event loop. GUI thread.
/// @param bExec runs the main loop until the application ends, and returns its result; otherwise events that
/// wait are handled and 0 is returned.
/// @param nMaxTime milliseconds after which no further event is begun; 0 handles all that wait.
KXAPI_GUI_API int processEventGUI(bool bExec, unsigned int nMaxTime);

/// Puts an image on the system's clipboard; nothing for null. GUI thread. Raises LogicalErrorException when
/// the SDK isn't started, what the converter raises, BadAllocException.
KXAPI_GUI_API void SetIKxImageToClipboard(IKxImage* pIKxImage);

} // namespace KxApi

// These stand outside the namespace, where applications look for them.

/// As KxApi::CKxApi_GUIApp::getHandle.
KXAPI_GUI_API void* GetModuleHandleGUI();

/// Shows the exception's place and text in a message box, and returns when the user has closed it. GUI
/// thread.
KXAPI_GUI_API void ShowErrorMessage(const GenICam::GenericException& e);

/// Registers and removes the resources of the library: feature descriptions and icons. CreateIKxWnd does it.
KXAPI_GUI_API int qInitResources_KxSDKApi_GUI_qt_resource();
KXAPI_GUI_API int qCleanupResources_KxSDKApi_GUI_qt_resource();
