// SPDX-License-Identifier: Apache-2.0
// The widget that shows a plot.
#pragma once

#include "frame/BaseDialog_qt.h"

#include <QPixmap>
#include <QWidget>
#include <cstdint>
#include <utility>

namespace KxApi
{

struct ICDisplayGraphDlgParent;
struct IDisplayGraphWidgetParent;

/// Paints the newest data at the ticks of a timer, from the first data on; with an interval of 0 whenever
/// they come. GUI thread, but for the functions whose names begin with On and Initialize: those may be called
/// by any.
class CDisplayGraphWidget : public QWidget
{
    Q_OBJECT

public:
    /// Raises BadAllocException.
    explicit CDisplayGraphWidget(QWidget* pParent = nullptr);
    CDisplayGraphWidget(const CDisplayGraphWidget&) = delete;
    CDisplayGraphWidget& operator=(const CDisplayGraphWidget&) = delete;
    ~CDisplayGraphWidget() override;

    /// Both null, or both given, and alive as long as they are set.
    void SetIDisplayGraphWidgetParent(IDisplayGraphWidgetParent* pParent) { m_pParent = pParent; }
    void SetDialogParent(CBaseDialogEx* pDialog) { m_pDialog = pDialog; }

    /// Starts the timer with the window's refresh interval.
    void Initialize();
    void OnUpdateGraphData();
    void OnUpdateDrawSetting();
    void OnWidgetSizeUpdated(int nWidth, int nHeight);

    /// Whether each picture is painted over the one before it.
    void setTranslucent(bool bTranslucent);

    void TerminateTimer();

signals:
    void onTimerUpdatedSignal();
    void onDrawSettingUpdatedSignal();
    void onGraphUpdatedSignal();
    void onWidgetSizeUpdatedSignal(int width, int height);
    void onDisplayUpdatedSignal();

private slots:
    void onTimerUpdatedSlot();
    void onDrawSettingUpdatedSlot();
    void onGraphUpdatedSlot();
    void onWidgetSizeUpdatedSlot(int width, int height);
    void onDisplayUpdatedSlot();

protected:
    void timerEvent(QTimerEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    template <class Function>
    void Guarded(Function&& function) noexcept
    {
        if (m_pDialog)
            m_pDialog->Guarded(std::forward<Function>(function));
    }
    ICDisplayGraphDlgParent* Window() const;

    IDisplayGraphWidgetParent* m_pParent = nullptr;
    CBaseDialogEx* m_pDialog = nullptr;
    int32_t m_nTimerId = 0; // 0: no timer
    uint32_t m_nTimerInterval = 33;
    bool m_bGraphUpdated = false;
    bool m_bTranslucent = false;
    QPixmap m_objBackdrop; // what was shown before
};

} // namespace KxApi
