// SPDX-License-Identifier: Apache-2.0
// What the tests of the windows share: a started SDK, images, callbacks that keep a record, events.
#pragma once

#include <GenApi/GenApi.h>
#include <KxApi_GUI/IKxWndCallback.h>
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/KxApi_TL.h>

#include <gtest/gtest.h>

#include <QEvent>
#include <QPointer>
#include <QWidget>
#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace KxTest
{

using ImageBufferPtr = KxApi::CKxAutoPtr<KxApi::IKxImageBufferReleasable>;
using ImageWndPtr = KxApi::CIKxWndPtrT<KxApi::IKxImageDisplayWnd>;

/// An image whose bytes are all `nValue`.
ImageBufferPtr MakeImage(size_t nWidth, size_t nHeight,
                         KxApi::EKxPixelFormatNamingConvention_t ePixelFormat = KxApi::KxPixelFormat_Mono8,
                         unsigned char nValue = 0x80);

/// Handles events until the condition holds; false when it doesn't within half a minute.
bool PumpUntil(const std::function<bool()>& condition);

/// Handles the events that wait, as a program without a Qt loop does.
void Pump();

/// The widget of a window that is shown.
QWidget* WidgetOf(KxApi::IKxWnd& window);

/// The text of the GenICam exception that a call raises; empty when it raises none.
std::string ErrorOf(const std::function<void()>& call);
/// The place that it tells.
std::string PlaceOfErrorOf(const std::function<void()>& call);

/// Rounds of a test with many threads: more by KXAPI_HAMMER_ROUNDS, for runs by hand.
int HammerRounds(int nDefault);

/// What the callbacks of a window got. Outlives the window.
class CEventLog
{
public:
    /// Registers at a window, and returns the handle.
    void* Watch(KxApi::IKxRegisterCallback& source);

    /// The types of the events so far.
    std::vector<unsigned> Types() const;
    size_t Count(unsigned nType) const;

    /// Runs for each event, in its thread.
    std::function<void(KxApi::IKxCallbackParamBase&)> onEvent;
    /// Callbacks that were released.
    std::atomic<int> nReleased{0};

private:
    class CCallback;

    mutable std::mutex m_mutex;
    std::vector<unsigned> m_vecTypes;
};

/// Threads that run their bodies again and again, with the number of the round, until the end.
class CThreads
{
public:
    explicit CThreads(std::vector<std::function<void(unsigned)>> vecBodies);
    /// Handles events meanwhile: a thread may wait for the GUI thread.
    ~CThreads();

private:
    std::atomic<bool> m_bStop{false};
    std::vector<std::thread> m_vecThreads;
};

/// Deals with the dialogs and menus that open, one each in this order; all must have come by the end.
class CDialogAnswers
{
public:
    using Answer = std::function<void(QWidget&)>;

    explicit CDialogAnswers(std::vector<Answer> vecAnswers);
    ~CDialogAnswers();

    /// Names the file in a file dialog, and takes it.
    static Answer NameFile(const QString& strName, const char* szFilter);

private:
    void Poll();

    std::vector<Answer> m_vecAnswers;
    size_t m_nAnswered = 0;
    QPointer<QWidget> m_pLast;
    QObject m_objContext; // of the timers
};

/// Counts what is painted in a widget.
class CPaintCounter : public QObject
{
public:
    explicit CPaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    int nPaints = 0;

private:
    bool eventFilter(QObject*, QEvent* pEvent) override
    {
        nPaints += pEvent->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

/// A started SDK, and windows.
class GuiTest : public ::testing::Test
{
protected:
    static ImageWndPtr MakeImageWnd();

    /// Shows a window as a modeless dialog.
    static void Show(KxApi::IKxWnd& window);

    KxApi::CKxApiAutoInitTerm m_objSdk;
};

} // namespace KxTest
