// SPDX-License-Identifier: Apache-2.0
#include "ObjectsDock.h"

#include "CameraView.h"
#include "FileDialog.h"

#include <GenApi/GenApi.h>
#include <KxApi_GUI/IKxDrawingMeasurements.h>
#include <KxApi_GUI/IKxDrawingTool.h>

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QSaveFile>
#include <QTableWidget>
#include <QVBoxLayout>

using namespace KxApi;

namespace
{

constexpr int kObjectsRefreshMs = 200;

/// A value twice: as the user's language writes it, and with a decimal point for other programs.
struct CellText
{
    QString strShown, strPlain;
};

CellText Number(double dValue, int nDigits, const QString& strUnit)
{
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return {locale.toString(dValue, 'f', nDigits) + strUnit, QString::number(dValue, 'f', nDigits) + strUnit};
}

CellText Numbers(const std::vector<double>& values, int nDigits, const QString& strUnit)
{
    QStringList shown, plain;
    for (const double dValue : values) {
        const CellText text = Number(dValue, nDigits, strUnit);
        shown.append(text.strShown);
        plain.append(text.strPlain);
    }
    return {shown.join("; "), plain.join("; ")};
}

CellText Position(double dX, double dY, int nDigits)
{
    const CellText x = Number(dX, nDigits, {});
    const CellText y = Number(dY, nDigits, {});
    // A comma can't part numbers that hold commas.
    const QString strSeparator = QLocale().decimalPoint() == ',' ? "; " : ", ";
    return {'(' + x.strShown + strSeparator + y.strShown + ')', '(' + x.strPlain + ", " + y.strPlain + ')'};
}

CellText Plain(const QString& strText) { return {strText, strText}; }

constexpr int kPlainRole = Qt::UserRole; // CellText::strPlain of a cell

} // namespace

struct ObjectsDock::Formats
{
    explicit Formats(GenApi::INodeMap& map)
        : pTypes(map.GetNode("DrawingItemType"))
        , strLength(Text(map, "TextOfLengthUnit"))
        , strArea(Text(map, "TextOfAreaUnit"))
        , strAngle(Text(map, "TextOfAngleUnit"))
        , nLength(Digits(map, "PrecisionForLength"))
        , nArea(Digits(map, "PrecisionForArea"))
        , nAngle(Digits(map, "PrecisionForAngle"))
        , nPosition(Digits(map, "PrecisionForPosition"))
    {}
    static QString Text(GenApi::INodeMap& map, const char* szNode)
    {
        return QString::fromUtf8(GenApi::CStringPtr(map.GetNode(szNode))->GetValue().c_str());
    }
    static int Digits(GenApi::INodeMap& map, const char* szNode)
    {
        return static_cast<int>(GenApi::CIntegerPtr(map.GetNode(szNode))->GetValue());
    }
    QString Type(_EKxDrawingItemType_t eType) const
    {
        GenApi::IEnumEntry* const pEntry = pTypes->GetEntry(eType);
        return pEntry ? QString::fromUtf8(pEntry->GetSymbolic().c_str()) : QString();
    }

    GenApi::CEnumerationPtr pTypes;
    QString strLength, strArea, strAngle;
    int nLength, nArea, nAngle, nPosition;
};

ObjectsDock::ObjectsDock(QWidget* pParent)
    : ViewerDock(tr("Measurements"), "measurements", pParent)
    , m_pTable(new QTableWidget(0, 6))
    , m_pCopy(new QPushButton(tr("Copy")))
    , m_pSave(new QPushButton(tr("Save as CSV...")))
{
    m_pTable->setHorizontalHeaderLabels(
        {tr("Name"), tr("Type"), tr("Length"), tr("Area"), tr("Angle"), tr("Position")});
    m_pTable->setAccessibleName(windowTitle());
    m_pTable->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_pTable->setSelectionMode(QAbstractItemView::SingleSelection);
    m_pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_pTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    auto* const pContents = new QWidget(this);
    auto* const pLayout = new QVBoxLayout(pContents);
    auto* const pButtons = new QHBoxLayout;
    pLayout->setContentsMargins(4, 4, 4, 4);
    pLayout->addWidget(m_pTable);
    pLayout->addLayout(pButtons);
    pButtons->addStretch();
    pButtons->addWidget(m_pCopy);
    pButtons->addWidget(m_pSave);
    setWidget(pContents);
    connect(m_pTable, &QTableWidget::cellClicked, this, &ObjectsDock::SelectObject);
    connect(m_pCopy, &QPushButton::clicked, this, &ObjectsDock::Copy);
    connect(m_pSave, &QPushButton::clicked, this, &ObjectsDock::Save);
    connect(&m_timer, &QTimer::timeout, this, &ObjectsDock::Refresh);
    m_timer.setInterval(kObjectsRefreshMs);
}

void ObjectsDock::Follow(CameraView& view)
{
    m_pView = &view;
    m_pMeasurements = dynamic_cast<IKxDrawingMeasurements*>(view.Window().GetIKxDrawingTool());
    m_nRevision = ~uint64_t{0};
    if (isVisible())
        Refresh();
}

void ObjectsDock::Unfollow()
{
    m_pView = nullptr;
    m_pMeasurements = nullptr;
    m_pTable->setRowCount(0);
}

void ObjectsDock::showEvent(QShowEvent* pEvent)
{
    Refresh();
    m_timer.start();
    ViewerDock::showEvent(pEvent);
}

void ObjectsDock::hideEvent(QHideEvent* pEvent)
{
    m_timer.stop();
    ViewerDock::hideEvent(pEvent);
}

void ObjectsDock::Refresh()
{
    if (!m_pMeasurements || m_nRevision == m_pMeasurements->GetRevision())
        return;
    try {
        m_nRevision = m_pMeasurements->GetRevision(); // ahead of the values, which may change meanwhile
        const std::vector<CKxDrawingMeasurement> measurements = m_pMeasurements->GetMeasurements();
        const Formats formats(*m_pView->Window().GetINodeMap());
        m_pTable->setRowCount(static_cast<int>(measurements.size()));
        for (int i = 0; i < m_pTable->rowCount(); ++i)
            ShowRow(i, measurements[static_cast<size_t>(i)], formats);
    } catch (const GenICam::GenericException&) {
        m_nRevision = ~uint64_t{0}; // once more at the next turn
    }
    m_pCopy->setEnabled(m_pTable->rowCount() != 0);
    m_pSave->setEnabled(m_pTable->rowCount() != 0);
}

void ObjectsDock::ShowRow(int nRow, const CKxDrawingMeasurement& measurement, const Formats& formats)
{
    const bool bCentre = (measurement.nValues & KxDisplayText_CentralCoordinate) != 0;
    const double x = bCentre ? measurement.dCentreX : measurement.dLeft;
    const double y = bCentre ? measurement.dCentreY : measurement.dTop;
    const CellText texts[] = {
        Plain(QString::fromUtf8(measurement.strName.c_str())),
        Plain(formats.Type(measurement.eType)),
        Numbers(measurement.vecLengths, formats.nLength, formats.strLength),
        (measurement.nValues & KxDisplayText_Area) != 0
            ? Number(measurement.dArea, formats.nArea, formats.strArea)
            : CellText(),
        Numbers(measurement.vecAngles, formats.nAngle, formats.strAngle),
        Position(x, y, formats.nPosition),
    };
    int nColumn = 0;
    for (const CellText& text : texts) {
        if (!m_pTable->item(nRow, nColumn))
            m_pTable->setItem(nRow, nColumn, new QTableWidgetItem);
        QTableWidgetItem& item = *m_pTable->item(nRow, nColumn++);
        item.setText(text.strShown);
        item.setData(kPlainRole, text.strPlain);
        item.setSelected(measurement.bSelected);
    }
}

void ObjectsDock::SelectObject(int nRow)
{
    try {
        if (m_pMeasurements)
            m_pMeasurements->SelectObject(static_cast<size_t>(nRow));
    } catch (const GenICam::GenericException&) { // NOLINT(bugprone-empty-catch): it has just been deleted
    }
}

QString ObjectsDock::Text(QChar separator) const
{
    const auto quoted = [separator](QString strText) {
        if (strText.contains(separator) || strText.contains('"') || strText.contains('\n'))
            strText = '"' + strText.replace('"', "\"\"") + '"';
        return strText;
    };
    QString strAll;
    for (int nRow = -1; nRow < m_pTable->rowCount(); ++nRow) {
        QStringList fields;
        for (int nColumn = 0; nColumn < m_pTable->columnCount(); ++nColumn)
            fields.append(quoted(nRow < 0 ? m_pTable->horizontalHeaderItem(nColumn)->text()
                                          : m_pTable->item(nRow, nColumn)->data(kPlainRole).toString()));
        strAll += fields.join(separator) + '\n';
    }
    return strAll;
}

void ObjectsDock::Copy() const { QApplication::clipboard()->setText(Text('\t')); }

void ObjectsDock::Save()
{
    const QString strName = ChooseFile(this, FileChoice::Save, tr("Save measurements"), "measurements",
                                       {tr("Comma separated values (*.csv)")});
    if (strName.isEmpty())
        return;
    QSaveFile file(strName);
    if (!file.open(QIODevice::WriteOnly) || file.write(Text(',').toUtf8()) < 0 || !file.commit())
        QMessageBox::warning(this, windowTitle(), tr("Cannot save %1: %2").arg(strName, file.errorString()));
}
