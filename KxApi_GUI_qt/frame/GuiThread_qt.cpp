// SPDX-License-Identifier: Apache-2.0
#include "frame/GuiThread_qt.h"

#include <Base/GCException.h>

#include <QApplication>
#include <QMetaObject>
#include <QThread>
#include <exception>
#include <utility>

namespace KxApi
{

bool IsGuiThread()
{
    const QCoreApplication* const pApplication = QCoreApplication::instance();
    return pApplication && pApplication->thread() == QThread::currentThread();
}

void RunInGuiThread(const std::function<void()>& function)
{
    auto* const pApplication = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (!pApplication)
        throw RUNTIME_EXCEPTION("The process has no QApplication, so no window can be shown; call "
                                "processEventGUI or make a QApplication first.");
    if (IsGuiThread()) {
        function();
        return;
    }
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

void PostToGuiThread(QObject* pContext, std::function<void()> function)
{
    if (QObject* const pTarget = pContext ? pContext : QCoreApplication::instance())
        QMetaObject::invokeMethod(pTarget, std::move(function), Qt::QueuedConnection);
}

} // namespace KxApi
