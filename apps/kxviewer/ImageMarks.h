// SPDX-License-Identifier: Apache-2.0
// What the viewer paints over an image, how often the image is painted, and what it shows below the mouse.
#pragma once

#include "RateMeter.h"

#include <KxApi_GUI/KxApi_GUI.h>

#include <QPoint>
#include <QString>

/// Marks pixels at the ends of the scale and writes their values into large ones. It works by the drawing
/// callback of an image window, which it has to outlive. GUI thread.
class ImageMarks final : public KxApi::IKxCallback
{
public:
    /// Red where the shown image is at the upper end of its scale in one colour, blue where all colours are
    /// at the lower end.
    bool MarksExposure() const { return m_bExposure; }
    void SetMarksExposure(bool bOn) { m_bExposure = bOn; }
    /// The values as the camera sent them, from magnification 32 on.
    bool WritesValues() const { return m_bValues; }
    void SetWritesValues(bool bOn) { m_bValues = bOn; }

    /// The pixel that was below the mouse when the image was painted last, as a text; empty when the mouse
    /// was elsewhere. Place and values are those of the painted image.
    const QString& PixelText() const { return m_strPixel; }
    /// Where the mouse was then, on the screen.
    QPoint MousePosition() const { return m_mouse; }

    /// Images a second that came to the screen, over the last second.
    double ShownRate() const { return m_shown.Get().perSecond; }

    void OnCallback(KxApi::IKxCallbackParamBase* pParam) override;
    void Release() override {} // owned by the view

private:
    void NotePixel(const KxApi::IKxCallbackParamKxApiGUIEventDrawing& event, KxApi::IKxImage& camera);

    bool m_bExposure = false;
    bool m_bValues = true;
    RateMeter m_shown;
    const KxApi::IKxImage* m_pShown = nullptr; // to be compared only
    QString m_strPixel;
    QPoint m_mouse;
};
