// SPDX-License-Identifier: Apache-2.0
#include "entry/KxGUICreator_qt.h"

#include "entry/WindowTypes_qt.h"
#include "frame/BaseDialog_qt.h"
#include "frame/DialogFactory_qt.h"
#include "frame/GuiThread_qt.h"

#include <Base/GCException.h>

#include <QApplication>
#include <QEvent>
#include <QMutexLocker>

namespace KxApi
{
namespace
{
constexpr auto kBuild = static_cast<QEvent::Type>(QEvent::User); // 1000
}

CKxGUICreator::CKxGUICreator(_EKxWindowType_t eType, QWidget* pParent, IDlgParent* pDlgParent,
                             bool bWithMenuBar)
    : m_eType(eType)
    , m_pParent(pParent)
    , m_pDlgParent(pDlgParent)
    , m_bWithMenuBar(bWithMenuBar)
{}

CKxGUICreator::~CKxGUICreator() = default;

void CKxGUICreator::Start()
{
    const auto* const pApplication = qobject_cast<QApplication*>(QCoreApplication::instance());
    if (!pApplication)
        throw RUNTIME_EXCEPTION("The process has no QApplication, so no window can be shown; call "
                                "processEventGUI or make a QApplication first.");
    moveToThread(pApplication->thread());
    QCoreApplication::postEvent(this, new QEvent(kBuild));
    // This event alone: others would run the application's code in the middle of its call.
    if (IsGuiThread())
        QCoreApplication::sendPostedEvents(this, kBuild);
}

bool CKxGUICreator::event(QEvent* pEvent)
{
    if (pEvent->type() != kBuild)
        return false;
    CBaseDialogEx* pDialog = nullptr;
    std::exception_ptr pError;
    try {
        pDialog = MakePartDialog(m_eType, m_pParent, m_pDlgParent, m_bWithMenuBar);
    } catch (...) {
        pError = std::current_exception();
    }
    const QMutexLocker lock(&m_mutex);
    m_pDialog = pDialog;
    m_pError = pError;
    m_bDone = true;
    m_condition.wakeAll();
    return true;
}

CBaseDialogEx* CKxGUICreator::getDialog()
{
    const QMutexLocker lock(&m_mutex);
    while (!m_bDone)
        m_condition.wait(&m_mutex);
    if (m_pError)
        std::rethrow_exception(m_pError);
    return m_pDialog;
}

CBaseDialogEx* BuildPartDialog(_EKxWindowType_t eType, QWidget* pParent, IDlgParent* pDlgParent,
                               bool bWithMenuBar)
{
    CKxGUICreator objCreator(eType, pParent, pDlgParent, bWithMenuBar);
    objCreator.Start();
    return objCreator.getDialog();
}

} // namespace KxApi
