// SPDX-License-Identifier: Apache-2.0
// The dialog for fonts.
#pragma once

#include "drawing/KxGDI_qt.h"
#include "drawing/StyleConfigDlg_qt.h"

#include <memory>

namespace Ui
{
class KxDrawFontConfigDlg;
}

namespace KxApi
{

/// See CStyleConfigDlg.
class KxDrawFontConfigDlg final : public CStyleConfigDlg
{
    Q_OBJECT

public:
    explicit KxDrawFontConfigDlg(QWidget* pParent = nullptr);
    ~KxDrawFontConfigDlg() override;

    CKxFont m_objFont;

private slots:
    void on_fontComboBox_currentIndexChanged(const QString& strFamily);
    void on_spinBoxHeight_valueChanged(int nHeight);
    void on_comboBoxWeight_currentIndexChanged(int);
    void on_comboBoxStyle_currentIndexChanged(int);
    void on_comboBoxDecoration_currentIndexChanged(int);
    void on_comboBoxBackgroundMode_currentIndexChanged(int);
    void on_pushButtonForeground_clicked();
    void on_pushButtonBackground_clicked();

private:
    void ShowStyle() override;
    void AddSample(QGraphicsScene& scene, const QSize& size) override;
    void updateSample() override;

    const std::unique_ptr<Ui::KxDrawFontConfigDlg> m_pUi;
};

} // namespace KxApi
