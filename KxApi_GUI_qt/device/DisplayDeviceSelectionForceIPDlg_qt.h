// SPDX-License-Identifier: Apache-2.0
// The dialog that gives a GigE Vision camera another address.
#pragma once

#include "device/InterfaceDlg_qt.h"

#include <cstdint>
#include <memory>

class Ui_CDisplayDeviceSelectionForceIPDlg;

namespace KxApi
{

/// "Set IP Address": shows the addresses of the network card and of the camera that is selected in the
/// interface's node map, and sends the new ones by the Force IP command. It warns of addresses that the card
/// won't reach, but sends them, as the user may know better. An address that isn't one is sent as
/// 255.255.255.255. What fails leaves the dialog open.
class CDisplayDeviceSelectionForceIPDlg final : public CInterfaceDlg
{
    Q_OBJECT

public:
    explicit CDisplayDeviceSelectionForceIPDlg(QWidget* pParent);
    ~CDisplayDeviceSelectionForceIPDlg() override;

protected:
    void showEvent(QShowEvent* pEvent) override;

private slots:
    void on_btnOK_clicked();
    void on_btnCancel_clicked();
    void on_lineEditDevIP_textEdited(const QString& strText);
    void on_lineEditDevMask_textEdited(const QString& strText);
    void on_lineEditDevgw_textEdited(const QString& strText);
    void on_lineEditDevMAC_textEdited(const QString& strText);

private:
    void ReadFeatures();
    void WriteFeatures();
    void CheckCorrection();

    // Of the network card, in host byte order.
    uint32_t m_nHostIP = 0;
    uint32_t m_nHostSubnetMask = 0;
    uint32_t m_nHostGateway = 0;
    std::unique_ptr<Ui_CDisplayDeviceSelectionForceIPDlg> m_pUi;
    const char* const m_szSubnetMessage = "Camera Subnet must be the same with host Subnet.";
    const char* const m_szAddressMessage = "Camera IP address must differ from host IP address.";
};

} // namespace KxApi
