// SPDX-License-Identifier: Apache-2.0
#include "DeviceDialog.h"

#include <KxApi_GUI/IKxWndCallback.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxSystem.h>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

using namespace KxApi;

namespace
{

constexpr int kLookMs = 200;
constexpr int kNoAccess = 3; // DEVICE_ACCESS_STATUS_NOACCESS

/// Of those that the searches have found by now.
int CountWithoutAccess(const CIKxSystemPtrArray& systems)
{
    int nCameras = 0;
    try {
        for (size_t i = 0; i < systems.GetSize(); ++i) {
            for (uint32_t j = 0; j < systems[i]->GetInterfaceCount(); ++j) {
                const IKxInterface& interface = *systems[i]->GetIKxInterface(j);
                for (uint32_t k = 0; k < interface.GetDeviceCount(); ++k)
                    nCameras += interface.GetIKxDeviceInfo(k)->GetAccessStatus() == kNoAccess ? 1 : 0;
            }
        }
    } catch (const GenICam::OutOfRangeException&)
    { // NOLINT(bugprone-empty-catch): a list became shorter; the next count will be whole
    }
    return nCameras;
}

} // namespace

DeviceDialog::DeviceDialog(KxApps::Cameras& cameras, const QString& strLast, QWidget* pParent)
    : QDialog(pParent)
    , m_cameras(cameras)
    , m_strLast(strLast)
    , m_pPlace(new QWidget(this))
    , m_pState(new QLabel(this))
    , m_pAgain(new QPushButton(tr("Search &again"), this))
    , m_selection(CreateIKxWnd(KxWindowType_DeviceSelection))
{
    setObjectName("chooseCamera");
    setWindowTitle(tr("Choose a camera"));
    resize(820, 600);
    auto* const pLayout = new QVBoxLayout(this);
    auto* const pPlaceLayout = new QVBoxLayout(m_pPlace);
    pPlaceLayout->setContentsMargins(0, 0, 0, 0);
    auto* const pLine = new QHBoxLayout;
    m_pState->setObjectName("state");
    m_pState->setWordWrap(true);
    m_pAgain->setObjectName("searchAgain");
    m_pAgain->setAutoDefault(false);
    pLine->addWidget(m_pState, 1);
    pLine->addWidget(m_pAgain);
    pLayout->addWidget(m_pPlace, 1);
    pLayout->addLayout(pLine);
    connect(m_pAgain, &QPushButton::clicked, this, &DeviceDialog::Search);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        SelectLast();
        ShowState(); // the search that counts cameras may still be under way
    });
    m_selection->RegisterTargetIKxSystemList(m_cameras.SystemArray());
    m_hCallback = m_selection->RegisterCallback(this);
    Search();
}

DeviceDialog::~DeviceDialog()
{
    m_selection->DeregisterCallback(m_hCallback);
    m_selection.Reset();
}

KxApps::Camera DeviceDialog::Chosen() const
{
    KxApps::Camera camera{};
    m_selection->GetSelectedDeviceInfo(&camera.pInterface, &camera.pInfo);
    return camera;
}

QTreeWidget* DeviceDialog::Tree() const { return m_pPlace->findChild<QTreeWidget*>("treeDevice"); }

void DeviceDialog::Search()
{
    m_bSearching = true; // the window's end isn't the user's
    m_selection->Show(m_pPlace, KxWindowMode_Child);
    m_bSearching = false;
    if (QTreeWidget* const pTree = Tree()) {
        pTree->installEventFilter(this);
        pTree->setFocus();
    }
    m_strFailure.clear();
    ShowState();
    SelectLast();
    m_timer.start(kLookMs);
}

void DeviceDialog::SelectLast()
{
    QTreeWidget* const pTree = Tree();
    if (pTree && !pTree->selectedItems().isEmpty())
        m_strLast.clear(); // the user's own choice stays
    if (m_strLast.isEmpty() || !pTree)
        return;
    for (const KxApps::Camera& camera : m_cameras.All()) {
        if (m_strLast != QString::fromUtf8(camera.pInfo->GetID().c_str()))
            continue;
        const QString strTitle = QString::fromUtf8(camera.pInfo->GetDisplayName().c_str());
        const auto items = pTree->findItems(strTitle, Qt::MatchExactly | Qt::MatchRecursive);
        if (!items.isEmpty())
            pTree->setCurrentItem(items.first());
    }
}

void DeviceDialog::ShowState()
{
    QStringList lines;
    lines += m_strFailure.isEmpty() ? tr("Looking for cameras every five seconds.")
                                    : tr("The search has ended: %1").arg(m_strFailure);
    const int nHidden = CountWithoutAccess(m_cameras.SystemArray());
    if (nHidden > 0)
        lines += tr("%n camera(s) that can't be opened are hidden; the check box shows them.", "", nHidden);
    const QString strUnusable = QString::fromUtf8(GetKxProducersText().c_str());
    if (!strUnusable.isEmpty())
        lines += strUnusable;
    m_pState->setText(lines.join('\n'));
    m_pAgain->setVisible(!m_strFailure.isEmpty());
}

bool DeviceDialog::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() != QEvent::KeyPress)
        return QDialog::eventFilter(pWatched, pEvent);
    const int nKey = static_cast<QKeyEvent*>(pEvent)->key();
    auto* const pOpen = m_pPlace->findChild<QPushButton*>("btnOK");
    if ((nKey == Qt::Key_Return || nKey == Qt::Key_Enter) && pOpen) {
        pOpen->click(); // nothing, while it is disabled
        return true;
    }
    return QDialog::eventFilter(pWatched, pEvent);
}

void DeviceDialog::OnCallback(IKxCallbackParamBase* pParam)
{
    switch (pParam->GetCallbackType()) {
    case KxGUICallbackType_Close:
        if (!m_bSearching)
            QMetaObject::invokeMethod(
                this, [this] { done(Chosen().pInfo ? Accepted : Rejected); }, Qt::QueuedConnection);
        break;
    case KxGUICallbackType_Error: {
        const auto& event = *dynamic_cast<IKxCallbackParamKxApiGUIEventBaseWndError*>(pParam);
        QMetaObject::invokeMethod(
            this,
            [this, strText = QString::fromUtf8(event.GetException().GetDescription())] {
                m_strFailure = strText;
                ShowState();
            },
            Qt::QueuedConnection);
        break;
    }
    default:
        break;
    }
}
