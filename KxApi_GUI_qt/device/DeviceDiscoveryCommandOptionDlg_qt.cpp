// SPDX-License-Identifier: Apache-2.0
#include "device/DeviceDiscoveryCommandOptionDlg_qt.h"

#include "device/GevFeatures_qt.h"
#include "frame/utility_qt.h"

#include <Base/GCBadAlloc.h>

#include <arpa/inet.h>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace KxApi
{
namespace
{

constexpr char kDestination[] = "GevDeviceDiscoveryCommandDestinationIPAddress";
constexpr char kAllowBroadcast[] = "GevDiscoveryAllowsBroadcastOfAcknowledge";

template <class T>
T* Named(T* pObject, const char* szName)
{
    pObject->setObjectName(QString::fromLatin1(szName));
    return pObject;
}

} // namespace

/// The form's widgets; the dialog owns them.
struct CDeviceDiscoveryCommandOptionDlg::CForm
{
    explicit CForm(QDialog* pDialog)
        : pVerticalLayout(Named(new QVBoxLayout(pDialog), "verticalLayout"))
        , pHorizontalLayout(Named(new QHBoxLayout, "horizontalLayout"))
        , pHorizontalLayout2(Named(new QHBoxLayout, "horizontalLayout_2"))
        , pLabel(Named(new QLabel(tr("Destination IP Address"), pDialog), "label"))
        , pDestinationIP(Named(new QLineEdit(pDialog), "lineEditDestinationIP"))
        , pAllowBroadcastACK(
              Named(new QCheckBox(tr("Allow broadcast of Acknowledge"), pDialog), "chkAllowBroadcastACK"))
        , pOK(Named(new QPushButton(tr("OK"), pDialog), "btnOK"))
        , pCancel(Named(new QPushButton(tr("Cancel"), pDialog), "btnCancel"))
    {
        pLabel->setBuddy(pDestinationIP);
        pOK->setDefault(true);
        pHorizontalLayout->addWidget(pLabel);
        pHorizontalLayout->addWidget(pDestinationIP);
        pHorizontalLayout2->addStretch();
        pHorizontalLayout2->addWidget(pOK);
        pHorizontalLayout2->addWidget(pCancel);
        pVerticalLayout->addLayout(pHorizontalLayout);
        pVerticalLayout->addWidget(pAllowBroadcastACK);
        pVerticalLayout->addLayout(pHorizontalLayout2);
    }

    QVBoxLayout* const pVerticalLayout;
    QHBoxLayout* const pHorizontalLayout;
    QHBoxLayout* const pHorizontalLayout2;
    QLabel* const pLabel;
    QLineEdit* const pDestinationIP;
    QCheckBox* const pAllowBroadcastACK;
    QPushButton* const pOK;
    QPushButton* const pCancel;
};

CDeviceDiscoveryCommandOptionDlg::CDeviceDiscoveryCommandOptionDlg(QWidget* pParent)
    : CInterfaceDlg(pParent)
{
    GenICam::GuardBadAlloc([this] {
        setObjectName(QStringLiteral("CDeviceDiscoveryCommandOptionDlg"));
        setWindowTitle(tr("Device Discovery Command Option"));
        resize(380, 110);
        m_pUi = std::make_unique<CForm>(this);
        QMetaObject::connectSlotsByName(this);
        FixSize();
    });
}

CDeviceDiscoveryCommandOptionDlg::~CDeviceDiscoveryCommandOptionDlg() = default;

void CDeviceDiscoveryCommandOptionDlg::showEvent(QShowEvent* pEvent)
{
    try {
        ReadFeatures();
    } catch (...) { // NOLINT(bugprone-empty-catch): what was read so far is shown
    }
    CheckCorrection();
    QDialog::showEvent(pEvent);
}

void CDeviceDiscoveryCommandOptionDlg::ReadFeatures()
{
    GenApi::INodeMap& map = GetNodeMap(m_pInterface);
    m_pUi->pDestinationIP->setText(ToQString(GenApi::CIntegerPtr(map.GetNode(kDestination))->ToString()));
    m_pUi->pAllowBroadcastACK->setChecked(GenApi::CBooleanPtr(map.GetNode(kAllowBroadcast))->GetValue());
}

void CDeviceDiscoveryCommandOptionDlg::WriteFeatures()
{
    GenApi::INodeMap& map = GetNodeMap(m_pInterface);
    GenApi::CIntegerPtr(map.GetNode(kDestination))->SetValue(ParseAddress(m_pUi->pDestinationIP->text()));
    GenApi::CBooleanPtr(map.GetNode(kAllowBroadcast))->SetValue(m_pUi->pAllowBroadcastACK->isChecked());
}

void CDeviceDiscoveryCommandOptionDlg::CheckCorrection()
{
    in_addr address{};
    const bool bValid = inet_pton(AF_INET, m_pUi->pDestinationIP->text().toUtf8().constData(), &address) == 1;
    Mark(*m_pUi->pDestinationIP, !bValid);
    m_pUi->pOK->setEnabled(bValid);
}

void CDeviceDiscoveryCommandOptionDlg::on_btnOK_clicked()
{
    try {
        WriteFeatures();
        accept();
        close();
    } catch (...) { // NOLINT(bugprone-empty-catch): the dialog stays open
    }
}

void CDeviceDiscoveryCommandOptionDlg::on_btnCancel_clicked()
{
    reject();
    close();
}

void CDeviceDiscoveryCommandOptionDlg::on_lineEditDestinationIP_textEdited(const QString&)
{
    CheckCorrection();
}

} // namespace KxApi
