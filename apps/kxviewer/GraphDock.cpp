// SPDX-License-Identifier: Apache-2.0
#include "GraphDock.h"

#include "CameraView.h"
#include "GraphStatistics.h"

#include <GenApi/GenApi.h>
#include <KxApi_GUI/IKxDrawingTool.h>
#include <KxApi_IP/KxImageGraph.h>
#include <KxApi_TL/IKxImage.h>

#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <ctime>
#include <iterator>

using namespace KxApi;

namespace
{

constexpr int kShortestPauseMs = 90;
// Of the processor's time, a part that nobody misses: a plot that takes long comes less often.
constexpr double kPauseForCost = 14;

constexpr int kPlotHeight = 160; // at least, with scale and status bar
constexpr int kStatisticsRows = 4;
constexpr uint32_t kRightMargin = 24; // half a label of five digits

double ThreadMs()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) * 1e-6;
}

struct Column
{
    const char* szTitle;
    const char* szWidest;
};
constexpr Column kColumns[] = {
    {"", "Gr 135"},
    {QT_TRANSLATE_NOOP("GraphDock", "Mean"), "00000.0"},
    {QT_TRANSLATE_NOOP("GraphDock", "Dev."), "0000.0"},
    {QT_TRANSLATE_NOOP("GraphDock", "Min"), "00000"},
    {QT_TRANSLATE_NOOP("GraphDock", "Max"), "00000"},
    {QT_TRANSLATE_NOOP("GraphDock", "% min"), "% min"},
    {QT_TRANSLATE_NOOP("GraphDock", "% max"), "% max"},
};

QTableWidget* MakeTable(QWidget* pParent)
{
    constexpr int kPadding = 10;
    auto* const pTable = new QTableWidget(0, static_cast<int>(std::size(kColumns)), pParent);
    QFont font = pTable->font();
    constexpr double kFontScale = 0.8; // so that the image keeps its room
    font.setPointSizeF(font.pointSizeF() * kFontScale);
    pTable->setFont(font);
    pTable->horizontalHeader()->setFont(font);
    pTable->setAccessibleName(GraphDock::tr("Figures of the plot"));
    pTable->setToolTip(
        GraphDock::tr("Mean, standard deviation, least and greatest value, and the parts of the values that "
                      "stand at the two ends of the scale"));
    pTable->horizontalHeader()->setMinimumSectionSize(1);
    pTable->horizontalHeader()->setStretchLastSection(true);
    int nWidth = kPadding;
    for (int nColumn = 0; nColumn < pTable->columnCount(); ++nColumn) {
        const Column& column = kColumns[nColumn];
        pTable->setHorizontalHeaderItem(
            nColumn, new QTableWidgetItem(*column.szTitle ? GraphDock::tr(column.szTitle) : QString()));
        const int nColumnWidth = pTable->fontMetrics().horizontalAdvance(column.szWidest) + kPadding;
        pTable->setColumnWidth(nColumn, nColumnWidth);
        nWidth += nColumnWidth;
    }
    pTable->setMinimumWidth(nWidth);
    pTable->verticalHeader()->hide();
    const int nRowHeight = pTable->fontMetrics().height() + 4;
    pTable->verticalHeader()->setDefaultSectionSize(nRowHeight);
    pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    pTable->setSelectionMode(QAbstractItemView::ContiguousSelection);
    pTable->setFixedHeight(pTable->horizontalHeader()->sizeHint().height() + kStatisticsRows * nRowHeight +
                           4);
    return pTable;
}

QStringList TextsOf(const KxApps::GraphStatistics& s)
{
    const auto number = [](double d, int nDecimals) { return QLocale().toString(d, 'f', nDecimals); };
    return {QString::fromStdString(s.component),
            number(s.mean, 1),
            number(s.deviation, 1),
            number(s.min, 0),
            number(s.max, 0),
            number(s.atLowerEnd * 100, 2),
            number(s.atUpperEnd * 100, 2)};
}

} // namespace

GraphDock::GraphDock(const QString& strTitle, const char* szName, _EKxGraphNomalization_t eNormalization,
                     const char* szScaleMode, QWidget* pParent)
    : ViewerDock(strTitle, szName, pParent)
    , m_eNormalization(eNormalization)
    , m_szScaleMode(szScaleMode)
    , m_pSource(new QLabel)
    , m_list(CreateIKxGraphDataBufferListResizable(nullptr))
{
    auto* const pContent = new QWidget(this);
    auto* const pLayout = new QVBoxLayout(pContent);
    pLayout->setContentsMargins(2, 2, 2, 2);
    m_pSource->setWordWrap(true);
    m_pStatistics = MakeTable(pContent);
    auto* const pPlace = new QWidget(pContent);
    pPlace->setObjectName("plot");
    pPlace->setMinimumHeight(kPlotHeight);
    auto* const pPlaceLayout = new QVBoxLayout(pPlace);
    pPlaceLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pSource);
    pLayout->addWidget(pPlace, 1);
    pLayout->addWidget(m_pStatistics);
    SetContents(pContent);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &GraphDock::Look);
}

GraphDock::~GraphDock() { m_window.Reset(); }

void GraphDock::MakeWindow()
{
    m_window.Reset(CreateIKxWnd(KxWindowType_GraphDisplay));
    m_window->SetNormalization(m_eNormalization);
    m_window->SetPlotMarginRight(kRightMargin);
    m_window->SetRefreshInterval(0); // each plot once, and none but that
    const GenApi::CEnumerationPtr pScaleMode(m_window->GetINodeMap()->GetNode("ScaleMode"));
    pScaleMode->FromString(m_szScaleMode);
    m_window->Show(findChild<QWidget*>("plot"), KxWindowMode_Child);
}

void GraphDock::Follow(CameraView& view)
{
    m_pView = &view;
    m_plotted = {};
    if (isVisible())
        m_timer.start(0);
}

void GraphDock::Unfollow()
{
    m_pView = nullptr;
    m_timer.stop();
}

void GraphDock::showEvent(QShowEvent* pEvent)
{
    ViewerDock::showEvent(pEvent);
    if (!m_window)
        MakeWindow();
    m_timer.start(0);
}

void GraphDock::hideEvent(QHideEvent* pEvent)
{
    m_timer.stop();
    ViewerDock::hideEvent(pEvent);
}

void GraphDock::Look()
{
    if (!m_pView || !isVisible())
        return;
    const double dBegin = ThreadMs();
    try {
        Plot();
    } catch (const GenICam::GenericException& e) {
        Say(QString::fromUtf8(e.GetDescription()));
    }
    const double dPause = (ThreadMs() - dBegin) * kPauseForCost;
    m_timer.start(std::max(kShortestPauseMs, static_cast<int>(dPause)));
}

void GraphDock::Plot()
{
    IKxImageDisplayWnd& window = m_pView->Window();
    if (!window.HasImage())
        return Say(tr("There is no image yet"));
    Source source;
    if (const CameraSession* const pSession = m_pView->Session())
        source.nImages = pSession->GetStatistics().nDelivered;
    const auto* const pDrawing = dynamic_cast<IKxDrawingMeasurements*>(window.GetIKxDrawingTool());
    if (pDrawing)
        source.nDrawing = pDrawing->GetRevision();
    const IKxImage& image = *window.GetRegisteredIKxImage();
    source.pImage = &image;
    if (source == m_plotted)
        return;
    m_plotted = source;
    std::vector<CKxDrawingMeasurement> objects;
    if (pDrawing)
        objects = pDrawing->GetMeasurements();
    const auto selected = std::find_if(objects.begin(), objects.end(),
                                       [](const CKxDrawingMeasurement& object) { return object.bSelected; });
    m_list->Clear();
    const QString strText = Append(image, selected == objects.end() ? nullptr : &*selected, *m_list);
    m_window->RegisterIKxGraphDataBufferList(m_list.Get());
    ShowStatistics();
    Say(strText);
}

void GraphDock::Say(const QString& strText)
{
    if (m_pSource->text() != strText)
        m_pSource->setText(strText);
}

void GraphDock::ShowStatistics()
{
    const auto nRows = static_cast<int>(m_list->GetCount());
    if (m_pStatistics->rowCount() != nRows)
        m_pStatistics->setRowCount(nRows);
    for (int nRow = 0; nRow < nRows; ++nRow) {
        const QStringList texts =
            TextsOf(KxApps::StatisticsOf(*m_list->GetItem(static_cast<size_t>(nRow))->GetGraphData()));
        for (int nColumn = 0; nColumn < texts.size(); ++nColumn) {
            QTableWidgetItem* pItem = m_pStatistics->item(nRow, nColumn);
            if (!pItem) {
                pItem = new QTableWidgetItem;
                pItem->setTextAlignment(static_cast<int>(nColumn == 0 ? Qt::AlignCenter : Qt::AlignRight) |
                                        Qt::AlignVCenter);
                m_pStatistics->setItem(nRow, nColumn, pItem);
            }
            if (pItem->text() != texts[nColumn])
                pItem->setText(texts[nColumn]);
        }
    }
}

HistogramDock::HistogramDock(QWidget* pParent)
    : GraphDock(tr("Histogram"), "histogram", KxGraphNomalization_MaximumValue, "Logarithmic", pParent)
{}

QString HistogramDock::Append(const IKxImage& image, const CKxDrawingMeasurement* pSelected,
                              IKxGraphDataBufferListResizable& list)
{
    if (!pSelected || pSelected->eType != KxDrawingItemType_Rectangle || pSelected->vecPoints.size() < 2) {
        AppendHistogram(&image, nullptr, &list);
        return tr("Whole image, %1 x %2").arg(image.GetImageWidth()).arg(image.GetImageHeight());
    }
    // Each pixel that the rectangle touches.
    const auto range = [](double d0, double d1, size_t nSize) {
        const auto dSize = static_cast<double>(nSize);
        const double dFirst = std::clamp(std::floor(std::min(d0, d1) * dSize), 0.0, dSize - 1);
        const double dEnd = std::clamp(std::ceil(std::max(d0, d1) * dSize), dFirst + 1, dSize);
        return std::pair{static_cast<size_t>(dFirst), static_cast<size_t>(dEnd - dFirst)};
    };
    const auto& points = pSelected->vecPoints;
    const auto [nX, nWidth] = range(points[0].dX, points[1].dX, image.GetImageWidth());
    const auto [nY, nHeight] = range(points[0].dY, points[1].dY, image.GetImageHeight());
    const CKxPixelRect rect{nX, nY, nWidth, nHeight};
    AppendHistogram(&image, &rect, &list);
    return tr("Selected rectangle at %1, %2: %3 x %4").arg(nX).arg(nY).arg(nWidth).arg(nHeight);
}

ProfileDock::ProfileDock(QWidget* pParent)
    : GraphDock(tr("Line profile"), "profile", KxGraphNomalization_Off, "Linear", pParent)
{}

QString ProfileDock::Append(const IKxImage& image, const CKxDrawingMeasurement* pSelected,
                            IKxGraphDataBufferListResizable& list)
{
    const auto dLastX = static_cast<double>(image.GetImageWidth()) - 1;
    const auto dLastY = static_cast<double>(image.GetImageHeight()) - 1;
    CKxProfileLine line;
    QString strText = tr("Selected line");
    if (pSelected && pSelected->eType == KxDrawingItemType_Line && pSelected->vecPoints.size() >= 2) {
        // Of positions in the image to centres of pixels.
        const auto at = [](double dPart, double dLast) {
            return std::clamp(dPart * (dLast + 1) - 0.5, 0.0, dLast);
        };
        const auto& points = pSelected->vecPoints;
        line.dX0 = at(points[0].dX, dLastX);
        line.dY0 = at(points[0].dY, dLastY);
        line.dX1 = at(points[1].dX, dLastX);
        line.dY1 = at(points[1].dY, dLastY);
    } else {
        strText = tr("Middle row; select a drawn line to see another");
        line.dY0 = line.dY1 = std::floor(dLastY / 2);
        line.dX1 = dLastX;
    }
    AppendLineProfile(&image, line, &list);
    return strText + tr(" (%1, %2 to %3, %4)")
                         .arg(line.dX0, 0, 'f', 1)
                         .arg(line.dY0, 0, 'f', 1)
                         .arg(line.dX1, 0, 'f', 1)
                         .arg(line.dY1, 0, 'f', 1);
}
