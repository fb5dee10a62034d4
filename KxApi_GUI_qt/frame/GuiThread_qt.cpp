// SPDX-License-Identifier: Apache-2.0
#include "frame/GuiThread_qt.h"

#include <Base/GCException.h>

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>
#include <exception>

namespace KxApi
{

bool IsGuiThread()
{
    const QCoreApplication* const pApplication = QCoreApplication::instance();
    return pApplication && pApplication->thread() == QThread::currentThread();
}

void RunInGuiThread(const std::function<void()>& function)
{
    if (IsGuiThread()) {
        function();
        return;
    }
    QCoreApplication* const pApplication = QCoreApplication::instance();
    if (!pApplication)
        throw RUNTIME_EXCEPTION("The process has no application object, so no window can be shown; call "
                                "processEventGUI or make a QApplication first.");
    std::exception_ptr pError;
    QMetaObject::invokeMethod(
        pApplication,
        [&] {
            // No exception may go into the event loop.
            try {
                function();
            } catch (...) {
                pError = std::current_exception();
            }
        },
        Qt::BlockingQueuedConnection);
    if (pError)
        std::rethrow_exception(pError);
}

} // namespace KxApi
