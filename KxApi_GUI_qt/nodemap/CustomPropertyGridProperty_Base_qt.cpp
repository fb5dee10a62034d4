// SPDX-License-Identifier: Apache-2.0
#include "nodemap/CustomPropertyGridProperty_Base_qt.h"

#include "frame/IDlgParent.h"
#include "nodemap/ICDisplayNodeMapDlgParent.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QSpinBox>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

namespace KxApi
{
namespace
{

constexpr int kMinHeight = 20;
constexpr int kMinEditorWidth = 40;

/// All rows are as high as the highest editor, so that none grows when its editor comes.
int RowHeight()
{
    static const int nHeight =
        std::max({kMinHeight, QSpinBox().sizeHint().height(), QComboBox().sizeHint().height()});
    return nHeight;
}

} // namespace

CCustomPropertyGridProperty_Base::CCustomPropertyGridProperty_Base(IKxNodeMapDisplayWndInside* pWnd,
                                                                   QWidget* pParent, GenApi::INode* pNode,
                                                                   IPropertyCtrlEvent* pEvent)
    : QWidget(pParent)
    , m_pNode(pNode)
    , m_pWnd(pWnd)
    , m_pEvent(pEvent)
    , m_pLink(std::make_shared<CPropertyLink>(*this))
{
    setMinimumHeight(kMinHeight);
    connect(this, &CCustomPropertyGridProperty_Base::updateDisplayValueSignal, this, [this] {
        if (IsOnScreen())
            UpdateDisplayValue();
        else
            RequestUpdate();
    });
}

CCustomPropertyGridProperty_Base::~CCustomPropertyGridProperty_Base()
{
    Detach();
    for (QWidget* const pEditor : m_vecEditors)
        pEditor->disconnect(this); // they go after this
}

void CCustomPropertyGridProperty_Base::Detach() noexcept
{
    m_pLink->Cut();
    DeregisterGenApiCallback();
    m_pNode = static_cast<GenApi::INode*>(nullptr);
}

void CCustomPropertyGridProperty_Base::RegisterGenApiCallback()
{
    m_hGenApiCallback = CPropertyLink::Register(*m_pNode, m_pLink);
}

void CCustomPropertyGridProperty_Base::DeregisterGenApiCallback() noexcept
{
    const GenApi::CallbackHandleType hCallback = std::exchange(m_hGenApiCallback, 0);
    if (hCallback != 0)
        Dropping([hCallback] { GenApi::Deregister(hCallback); });
}

void CCustomPropertyGridProperty_Base::OnNodeCallback(GenApi::INode* pNode)
{
    if (m_hGenApiCallback == 0)
        return;
    if (!pNode)
        throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
    TellChanged();
}

void CCustomPropertyGridProperty_Base::TellChanged()
{
    if (m_pEvent)
        m_pEvent->OnNodeCallback(this);
    else
        emitUpdate();
}

GenICam::gcstring CCustomPropertyGridProperty_Base::GetName() const { return m_pNode->GetDisplayName(); }

QString CCustomPropertyGridProperty_Base::GetNameTooltip()
{
    return m_pNode ? ToQString(m_pNode->GetToolTip()) : QString();
}

bool CCustomPropertyGridProperty_Base::SetVisibility(GenApi::EVisibility eVisibility, bool bForce,
                                                     bool bAdjustSize)
{
    m_eVisibility = eVisibility;
    if (!bForce && m_pNode->GetVisibility() > eVisibility) {
        hide();
        return false;
    }
    show();
    if (bAdjustSize)
        adjustSize();
    return true;
}

void CCustomPropertyGridProperty_Base::setVisible(bool bVisible)
{
    m_bWantedVisible = bVisible;
    QWidget::setVisible(bVisible && m_bPlaced);
}

void CCustomPropertyGridProperty_Base::SetPlaced(bool bPlaced)
{
    if (std::exchange(m_bPlaced, bPlaced) != bPlaced)
        QWidget::setVisible(m_bWantedVisible && bPlaced);
}

QSize CCustomPropertyGridProperty_Base::sizeHint() const { return {0, RowHeight()}; }

void CCustomPropertyGridProperty_Base::Build()
{
    auto* const pLayout = new QHBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    m_pLabel = new QLabel(this);
    m_pLabel->setTextFormat(Qt::PlainText); // values may look like HTML
    m_pLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pLabel->setMinimumWidth(1);
    m_pLabel->hide();
    pLayout->addWidget(m_pLabel);
    MakeEditor();
}

void CCustomPropertyGridProperty_Base::AddEditor(QWidget& editor, int nStretch)
{
    if (nStretch > 0) {
        QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        policy.setHorizontalStretch(nStretch);
        editor.setSizePolicy(policy);
    }
    editor.setMinimumWidth(kMinEditorWidth); // limits of 64 bits would make it wider than the screen
    editor.setFocusPolicy(Qt::StrongFocus);
    editor.installEventFilter(this);
    static_cast<QHBoxLayout*>(layout())->addWidget(&editor);
    editor.show();
    m_vecEditors.push_back(&editor);
}

void CCustomPropertyGridProperty_Base::UpdateDisplayValue()
{
    const bool bFirst = !HasEditor();
    if (bFirst)
        Build();
    m_bUpdateRequested = false;
    Dropping([this] {
        const GenApi::EAccessMode eMode = m_pNode ? m_pNode->GetAccessMode() : GenApi::NI;
        ShowValue(eMode);
        ApplyDisplayRule(eMode);
    });
    if (bFirst)
        ConnectEditor();
}

void CCustomPropertyGridProperty_Base::ApplyDisplayRule(GenApi::EAccessMode eMode)
{
    const bool bAvailable = GenApi::IsAvailable(eMode);
    const bool bWritable = GenApi::IsWritable(eMode);
    if (bAvailable == m_bAvailable && bWritable == m_bWritable)
        return;
    if (m_bAvailable && !bAvailable)
        m_pLabel->setText(tr("Not Available"));
    m_bAvailable = bAvailable;
    m_bWritable = bWritable;
    const bool bEdited = bAvailable && bWritable;
    m_pLabel->setHidden(bEdited);
    for (QWidget* const pEditor : m_vecEditors) {
        pEditor->setHidden(!bEdited);
        pEditor->setEnabled(bWritable);
    }
}

bool CCustomPropertyGridProperty_Base::FocusEditor()
{
    if (m_vecEditors.empty() || !m_vecEditors.front()->isVisible())
        return false;
    m_vecEditors.front()->setFocus(Qt::TabFocusReason); // which selects what is in it
    return true;
}

bool CCustomPropertyGridProperty_Base::IsOnScreen() const
{
    return isVisible() && (!parentWidget() || parentWidget()->rect().intersects(geometry()));
}

void CCustomPropertyGridProperty_Base::TellWindow(const GenICam::GenericException& e)
{
    if (auto* const pDlgParent = dynamic_cast<IDlgParent*>(m_pWnd))
        pDlgParent->OnException(e);
}

bool CCustomPropertyGridProperty_Base::event(QEvent* pEvent)
{
    if (pEvent->type() != CPropertyLink::NoteType())
        return QWidget::event(pEvent);
    m_pLink->TakeNote();
    Dropping([this] { OnNodeCallback(m_pNode); });
    return true;
}

bool CCustomPropertyGridProperty_Base::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Wheel && !static_cast<QWidget*>(pWatched)->hasFocus()) {
        pEvent->ignore(); // goes on to the grid
        return true;
    }
    return QWidget::eventFilter(pWatched, pEvent);
}

} // namespace KxApi
