// SPDX-License-Identifier: Apache-2.0
// The dialog for lines.
#pragma once

#include "drawing/KxGDI_qt.h"
#include "drawing/StyleConfigDlg_qt.h"

#include <memory>

namespace Ui
{
class KxDrawLineConfigDlg;
}

namespace KxApi
{

/// See CStyleConfigDlg.
class KxDrawLineConfigDlg final : public CStyleConfigDlg
{
    Q_OBJECT

public:
    explicit KxDrawLineConfigDlg(QWidget* pParent = nullptr);
    ~KxDrawLineConfigDlg() override;

    CKxPen m_objPen;
    bool m_bHideEndcap = false; ///< whether these aren't offered
    bool m_bHideJoin = false;

private slots:
    void on_spinBoxWidth_valueChanged(int nWidth);
    void on_comboBoxStyle_currentIndexChanged(int);
    void on_comboBoxEndcap_currentIndexChanged(int);
    void on_comboBoxJoin_currentIndexChanged(int);
    void on_pushButtonColor_clicked();

private:
    void ShowStyle() override;
    void AddSample(QGraphicsScene& scene, const QSize& size) override;
    void updateSample() override;

    const std::unique_ptr<Ui::KxDrawLineConfigDlg> m_pUi;
};

} // namespace KxApi
