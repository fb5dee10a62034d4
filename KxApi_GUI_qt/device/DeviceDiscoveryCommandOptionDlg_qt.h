// SPDX-License-Identifier: Apache-2.0
// The dialog for how an interface looks for GigE Vision cameras.
#pragma once

#include "device/InterfaceDlg_qt.h"

#include <memory>

namespace KxApi
{

/// "Device Discovery Command Option": where the discovery command goes, and whether devices may answer by
/// broadcast. An address that isn't one can't be sent. What fails leaves the dialog open.
class CDeviceDiscoveryCommandOptionDlg final : public CInterfaceDlg
{
    Q_OBJECT

public:
    explicit CDeviceDiscoveryCommandOptionDlg(QWidget* pParent);
    ~CDeviceDiscoveryCommandOptionDlg() override;

protected:
    void showEvent(QShowEvent* pEvent) override;

private slots:
    void on_btnOK_clicked();
    void on_btnCancel_clicked();
    void on_lineEditDestinationIP_textEdited(const QString& strText);

private:
    struct CForm;

    void ReadFeatures();
    void WriteFeatures();
    void CheckCorrection();

    std::unique_ptr<CForm> m_pUi;
};

} // namespace KxApi
