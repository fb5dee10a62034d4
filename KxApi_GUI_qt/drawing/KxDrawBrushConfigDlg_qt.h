// SPDX-License-Identifier: Apache-2.0
// The dialog for brushes.
#pragma once

#include "drawing/KxGDI_qt.h"
#include "drawing/StyleConfigDlg_qt.h"

#include <memory>

namespace Ui
{
class KxDrawBrushConfigDlg;
}

namespace KxApi
{

/// See CStyleConfigDlg.
class KxDrawBrushConfigDlg final : public CStyleConfigDlg
{
    Q_OBJECT

public:
    explicit KxDrawBrushConfigDlg(QWidget* pParent = nullptr);
    ~KxDrawBrushConfigDlg() override;

    CKxBrush m_objBrush;

private slots:
    void on_comboBoxStyle_currentIndexChanged(int);
    void on_comboBoxBackgroundMode_currentIndexChanged(int);
    void on_comboBoxPollyFillMode_currentIndexChanged(int);
    void on_pushButtonForegroundColor_clicked();
    void on_pushButtonBackgroundColor_clicked();

private:
    void ShowStyle() override;
    void AddSample(QGraphicsScene& scene, const QSize& size) override;
    void updateSample() override;

    /// Only hatches have a background.
    void EnableBackground();

    const std::unique_ptr<Ui::KxDrawBrushConfigDlg> m_pUi;
    CKxPen m_objPen; // outline of the sample
};

} // namespace KxApi
