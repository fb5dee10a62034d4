// SPDX-License-Identifier: Apache-2.0
#include "frame/KxStatusBar_qt.h"

#include "frame/IDlgParent.h"

#include <Base/GCException.h>

#include <QLabel>
#include <QStringList>
#include <algorithm>
#include <new>

namespace KxApi
{
namespace
{

constexpr int kPollIntervalMs = 500;
constexpr int kMaximumHeight = 30;
constexpr int kTextFrame = static_cast<int>(QFrame::Panel) | static_cast<int>(QFrame::Sunken);

/// Lets a field be as wide as its text, up to the greater part of the bar. It keeps what it had for longer
/// texts, since numbers change all the time.
void MakeRoom(QLabel& label)
{
    const int nRoom = label.parentWidget()->width() * 2 / 3;
    label.setMinimumWidth(
        std::clamp(std::max(label.minimumWidth(), label.sizeHint().width()), 1, std::max(1, nRoom)));
}

} // namespace

CKxStatusBar::CKxStatusBar(IKxStatusBarInfo* pInfo)
try : m_pInfo(pInfo) {
    const int nCount = m_pInfo->GetStatusBarIndicatorsCount();
    for (int nIndex = 0; nIndex < nCount; ++nIndex)
        AddField(nIndex);
    setMaximumHeight(kMaximumHeight);
    // However long the texts are, the window can be made narrow.
    setSizePolicy(QSizePolicy::Ignored, sizePolicy().verticalPolicy());
    setSizeGripEnabled(true);
    connect(&m_objTimer, &QTimer::timeout, this, &CKxStatusBar::OnTimer);
    m_objTimer.start(kPollIntervalMs);
} catch (const std::bad_alloc& e) {
    throw BAD_ALLOC_EXCEPTION("%s", e.what());
}

void CKxStatusBar::AddField(int nIndex)
{
    auto* const pLabel = new QLabel(this);
    pLabel->setMargin(1);
    pLabel->setMinimumWidth(1);
    // A text of the user's may look like markup.
    pLabel->setTextFormat(Qt::PlainText);
    // As high as with a text, since what is above would jump when the first one comes.
    pLabel->setFrameStyle(kTextFrame);
    pLabel->setText(" ");
    unsigned int nWidth = 0;
    bool bStretch = false;
    m_pInfo->GetStatusBarInfo(nIndex, &nWidth, &bStretch);
    if (nWidth != 0)
        pLabel->setFixedWidth(static_cast<int>(nWidth));
    if (bStretch)
        pLabel->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    m_vecLabels.push_back(pLabel);
    addWidget(pLabel, bStretch ? 2 : 1);
}

void CKxStatusBar::showEvent(QShowEvent* pEvent)
{
    // The first texts needn't wait.
    QTimer::singleShot(0, this, &CKxStatusBar::OnTimer);
    QStatusBar::showEvent(pEvent);
}

void CKxStatusBar::OnTimer()
{
    if (!isVisible())
        return;
    try {
        ShowTexts();
    } catch (...) { // NOLINT(bugprone-empty-catch): the next tick tries again
    }
}

void CKxStatusBar::ShowTexts()
{
    const int nCount = m_pInfo->GetStatusBarIndicatorsCount();
    QStringList listText;
    m_pInfo->GetStatusBarText(listText);
    const int nShown = std::min({nCount, listText.size(), static_cast<int>(m_vecLabels.size())});
    for (int nIndex = 0; nIndex < nShown; ++nIndex) {
        QLabel& label = *m_vecLabels[static_cast<size_t>(nIndex)];
        if (listText[nIndex].isEmpty()) {
            label.hide();
            continue;
        }
        label.setFrameStyle(kTextFrame);
        label.setText(listText[nIndex]);
        const bool bFixed = label.maximumWidth() != QWIDGETSIZE_MAX;
        if (!bFixed && label.sizePolicy().horizontalPolicy() != QSizePolicy::Expanding)
            MakeRoom(label);
        label.show();
    }
}

} // namespace KxApi
