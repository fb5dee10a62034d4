// SPDX-License-Identifier: Apache-2.0
#include "ViewerStatus.h"

#include "CameraView.h"

#include <QLabel>
#include <QLocale>
#include <QStatusBar>
#include <algorithm>

using namespace KxApi;

namespace
{

constexpr double kRateMegabyte = 1e6;

QString Rate(double dRate) { return QLocale().toString(dRate, 'f', 1); }

} // namespace

ViewerStatus::ViewerStatus(QStatusBar& bar)
    : QObject(&bar)
    , m_pWarning(new QLabel(&bar))
{
    m_pWarning->setObjectName("warning");
    m_pWarning->setTextFormat(Qt::PlainText);
    m_pWarning->setMinimumWidth(1); // the figures come first
    m_pWarning->hide();
    bar.addWidget(m_pWarning, 1);
    m_pPixel = Add(bar, "pixel", tr("Pixel under the mouse"), 26);
    m_figures = {
        Add(bar, "rate", tr("Images from the camera, over the last second"), 13),
        Add(bar, "shown", tr("Images shown, over the last second"), 11),
        Add(bar, "lost", tr("Images that did not come since the start"), 8),
        Add(bar, "incomplete", tr("Images since the start of which parts are missing"), 12),
        Add(bar, "bandwidth", tr("Data from the camera, over the last second"), 11),
    };
}

QLabel* ViewerStatus::Add(QStatusBar& bar, const char* szName, const QString& strTitle, int nWidest)
{
    auto* const pLabel = new QLabel(&bar);
    pLabel->setObjectName(szName);
    pLabel->setToolTip(strTitle);
    pLabel->setAccessibleName(strTitle);
    pLabel->setMinimumWidth(pLabel->fontMetrics().averageCharWidth() * nWidest); // figures don't jump
    bar.addPermanentWidget(pLabel);
    return pLabel;
}

void ViewerStatus::Show(CameraView& view, const QString& strWithoutCamera)
{
    const CameraSession* const pSession = view.Session();
    if (!pSession) {
        for (QLabel* const pLabel : m_figures)
            pLabel->setText(pLabel == m_figures.first() ? strWithoutCamera : QString());
        return;
    }
    const CKxStreamStatistics statistics = pSession->GetStatistics();
    const RateMeter::Rates rates = pSession->GetRates();
    const QString texts[] = {
        tr("%1 images/s").arg(Rate(rates.perSecond)),
        tr("%1 shown/s").arg(Rate(view.Marks().ShownRate())),
        tr("%1 lost").arg(LostImages(statistics)),
        tr("%1 incomplete").arg(statistics.nIncomplete),
        tr("%1 MB/s").arg(Rate(rates.bytesPerSecond / kRateMegabyte)),
    };
    for (int i = 0; i < m_figures.size(); ++i)
        m_figures[i]->setText(texts[i]);
}

void ViewerStatus::ShowPixel(const QString& strText) { m_pPixel->setText(strText); }

int ViewerStatus::RoomForMessages() const
{
    constexpr int kMargin = 12, kLeast = 120;
    return std::max(m_pPixel->x() - kMargin, kLeast);
}

void ViewerStatus::ShowWarning(const QString& strText)
{
    constexpr int kWidest = 400;
    m_pWarning->setText(m_pWarning->fontMetrics().elidedText(strText, Qt::ElideRight, kWidest));
    m_pWarning->setToolTip(strText);
    m_pWarning->setVisible(!strText.isEmpty());
}
