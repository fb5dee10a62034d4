// SPDX-License-Identifier: Apache-2.0
// Where recordings go: folder and kind of file.
#pragma once

#include <QWidget>
#include <string>

class QComboBox;
class QLineEdit;

/// Remembers what was chosen last. GUI thread.
class RecordingTarget : public QWidget
{
    Q_OBJECT

public:
    explicit RecordingTarget(QWidget* pParent);

    /// A name that isn't in use yet, made of the camera's name and the time. Folders are made. Raises
    /// RuntimeException with the folder when that can't be.
    std::string NewOutput(const QString& strCamera) const;
    QString Folder() const;

private:
    void Browse();
    void Remember() const;

    QLineEdit* m_pFolder;
    QComboBox* m_pKind;
};
