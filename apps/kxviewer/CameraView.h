// SPDX-License-Identifier: Apache-2.0
// One camera on the screen: its image window and, while it is open, the camera itself.
#pragma once

#include "CameraSession.h"
#include "ImageMarks.h"
#include "RunReport.h"

#include <KxApi_GUI/KxApi_GUI.h>

#include <QVector>
#include <QWidget>
#include <memory>

class QLabel;

/// A page of the viewer. GUI thread.
class CameraView : public QWidget
{
    Q_OBJECT

public:
    /// The report counts the paints of the image window; it outlives this.
    CameraView(RunReport& report, QWidget* pParent);
    ~CameraView() override;

    /// Opens the camera in place of the one that is open. When the new one can't be opened or set, raises
    /// what keeps it from that, and the present one goes on; but a camera can't be opened twice, so the same
    /// one is closed first.
    void Open(const KxApps::Camera& camera, const std::vector<std::string>& settings);
    void Close();

    /// The open camera, null when there is none.
    CameraSession* Session() const { return m_session.get(); }
    bool Has(const KxApps::Camera& camera) const;
    /// Always there. Its widget is a child of this.
    KxApi::IKxImageDisplayWnd& Window() { return *m_window; }
    ImageMarks& Marks() { return m_marks; }
    QString Title() const;

    /// A line with the title above the image, for views that stand side by side.
    void ShowCaption(bool bShow, bool bInFront);
    /// The pixel below the mouse, with its values, of the painted image; empty when the mouse is elsewhere.
    QString PixelText();

signals:
    /// A camera was opened (Session() is the new one) or is about to be closed: whoever keeps its node maps
    /// lets go of them in the first of the two.
    void SessionEnds();
    void SessionBegan();
    void Failed(const QString& strText, bool bEnded);
    void Finished();
    /// The user pressed a button of the mouse over the image.
    void Touched();

private:
    ImageMarks m_marks;
    QLabel* m_pCaption;
    KxApi::CKxAutoPtr<KxApi::IKxWndReleasable, KxApi::IKxImageDisplayWnd> m_window;
    QVector<void*> m_callbacks;               // their handles
    std::unique_ptr<CameraSession> m_session; // before the window goes, whose images it makes
};
