// SPDX-License-Identifier: Apache-2.0
#include "device/DisplayDeviceSelectionForceIPDlg_qt.h"

#include "device/GevFeatures_qt.h"
#include "frame/utility_qt.h"
#include "ui_DisplayDeviceSelectionForceIPDlg_qt.h"

#include <Base/GCBadAlloc.h>

namespace KxApi
{

CDisplayDeviceSelectionForceIPDlg::CDisplayDeviceSelectionForceIPDlg(QWidget* pParent)
    : CInterfaceDlg(pParent)
    , m_pUi(GenICam::GuardBadAlloc([] { return std::make_unique<Ui_CDisplayDeviceSelectionForceIPDlg>(); }))
{
    GenICam::GuardBadAlloc([this] {
        m_pUi->setupUi(this);
        FixSize();
    });
}

CDisplayDeviceSelectionForceIPDlg::~CDisplayDeviceSelectionForceIPDlg() = default;

void CDisplayDeviceSelectionForceIPDlg::showEvent(QShowEvent* pEvent)
{
    try {
        ReadFeatures();
    } catch (...) { // NOLINT(bugprone-empty-catch): what was read so far is shown
    }
    CheckCorrection();
    QDialog::showEvent(pEvent);
}

void CDisplayDeviceSelectionForceIPDlg::ReadFeatures()
{
    const struct CField
    {
        const char* szFeature;
        QLineEdit* pEdit;
        uint32_t* pValue; // null where the text is enough
    } fields[] = {
        {"GevInterfaceMACAddress", m_pUi->lineEditNICMAC, nullptr},
        {"GevDeviceMACAddress", m_pUi->lineEditDevMAC, nullptr},
        {"GevInterfaceSubnetIPAddress", m_pUi->lineEditNICIP, &m_nHostIP},
        {"GevDeviceForceIPAddress", m_pUi->lineEditDevIP, nullptr},
        {"GevInterfaceSubnetMask", m_pUi->lineEditNICMask, &m_nHostSubnetMask},
        {"GevDeviceForceSubnetMask", m_pUi->lineEditDevMask, nullptr},
        {"GevInterfaceGateway", m_pUi->lineEditNICgw, &m_nHostGateway},
        {"GevDeviceForceGateway", m_pUi->lineEditDevgw, nullptr},
    };
    GenApi::INodeMap& map = GetNodeMap(m_pInterface);
    for (const CField& field : fields) {
        const GenApi::CIntegerPtr pFeature(map.GetNode(field.szFeature));
        field.pEdit->setText(ToQString(pFeature->ToString()));
        if (field.pValue)
            *field.pValue = static_cast<uint32_t>(pFeature->GetValue());
    }
}

void CDisplayDeviceSelectionForceIPDlg::CheckCorrection()
{
    const CGevAddresses device{ParseAddress(m_pUi->lineEditDevIP->text()),
                               ParseAddress(m_pUi->lineEditDevMask->text()),
                               ParseAddress(m_pUi->lineEditDevgw->text())};
    const CGevFaults faults = FindFaults({m_nHostIP, m_nHostSubnetMask, m_nHostGateway}, device);
    const bool bOtherSubnet = faults.bMask || faults.bGateway || faults.bSubnet;
    m_pUi->labelStatus->setText(QString::fromLatin1(faults.bSameIP ? m_szAddressMessage
                                                    : bOtherSubnet ? m_szSubnetMessage
                                                                   : ""));
    Mark(*m_pUi->lineEditDevIP, faults.bSameIP || faults.bSubnet);
    Mark(*m_pUi->lineEditDevMask, faults.bMask);
    Mark(*m_pUi->lineEditDevgw, faults.bGateway);
}

void CDisplayDeviceSelectionForceIPDlg::WriteFeatures()
{
    GenApi::INodeMap& map = GetNodeMap(m_pInterface);
    const auto write = [&](const char* szFeature, const QLineEdit* pEdit) {
        GenApi::CIntegerPtr(map.GetNode(szFeature))->SetValue(ParseAddress(pEdit->text()));
    };
    write("GevDeviceForceIPAddress", m_pUi->lineEditDevIP);
    write("GevDeviceForceSubnetMask", m_pUi->lineEditDevMask);
    write("GevDeviceForceGateway", m_pUi->lineEditDevgw);
    GenApi::CCommandPtr(map.GetNode("GevDeviceForceIP"))->Execute();
}

void CDisplayDeviceSelectionForceIPDlg::on_btnOK_clicked()
{
    try {
        WriteFeatures();
        accept();
        close();
    } catch (...) { // NOLINT(bugprone-empty-catch): the dialog stays open
    }
}

void CDisplayDeviceSelectionForceIPDlg::on_btnCancel_clicked()
{
    reject();
    close();
}

void CDisplayDeviceSelectionForceIPDlg::on_lineEditDevIP_textEdited(const QString&) { CheckCorrection(); }

void CDisplayDeviceSelectionForceIPDlg::on_lineEditDevMask_textEdited(const QString&) { CheckCorrection(); }

void CDisplayDeviceSelectionForceIPDlg::on_lineEditDevgw_textEdited(const QString&) { CheckCorrection(); }

void CDisplayDeviceSelectionForceIPDlg::on_lineEditDevMAC_textEdited(const QString&) {}

} // namespace KxApi
