// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QComboBox>

/// Shows the magnification in percent, with usual ones to choose and a field to type others. GUI thread.
class ZoomBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ZoomBox(QWidget* pParent);

    void ShowZoom(double dMagnification);

signals:
    /// The user chose a magnification.
    void Chosen(double dMagnification);

private:
    void Take(QString strText);
};
