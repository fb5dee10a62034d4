// SPDX-License-Identifier: Apache-2.0
#include "ZoomBox.h"

#include <QLineEdit>

namespace
{

constexpr double kOffered[] = {6400, 3200, 1600, 800, 400, 200, 100, 50, 25, 12.5};

QString Percent(double dMagnification)
{
    const double dPercent = dMagnification * 100;
    return QString::number(dPercent, 'f', dPercent < 10 ? 1 : 0) + " %";
}

} // namespace

ZoomBox::ZoomBox(QWidget* pParent)
    : QComboBox(pParent)
{
    setObjectName("zoom");
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setFocusPolicy(Qt::ClickFocus); // keys are the image's
    setToolTip(tr("Magnification"));
    setAccessibleName(tr("Magnification"));
    setMinimumContentsLength(7);
    for (const double dPercent : kOffered)
        addItem(QString::number(dPercent) + " %");
    connect(this, QOverload<int>::of(&QComboBox::activated), this, [this] { Take(currentText()); });
    connect(lineEdit(), &QLineEdit::returnPressed, this, [this] {
        Take(currentText());
        lineEdit()->clearFocus();
    });
}

void ZoomBox::Take(QString strText)
{
    bool bNumber = false;
    const double dPercent = strText.remove('%').trimmed().replace(',', '.').toDouble(&bNumber);
    if (bNumber && dPercent > 0)
        emit Chosen(dPercent / 100);
}

void ZoomBox::ShowZoom(double dMagnification)
{
    if (!lineEdit()->hasFocus() && currentText() != Percent(dMagnification))
        setEditText(Percent(dMagnification));
}
