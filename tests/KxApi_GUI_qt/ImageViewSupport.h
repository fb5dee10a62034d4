// SPDX-License-Identifier: Apache-2.0
// A shown image window, and the parts of its dialog.
#pragma once

#include "Support.h"
#include "image/DisplayImagePartDlg_qt.h"
#include "image/DisplayImageScrollArea_qt.h"
#include "image/DisplayImageWidget_qt.h"

#include <QAction>
#include <QPoint>

namespace KxTest
{

/// A colour, made to be compared and read in messages.
inline QRgb Rgb(int nRed, int nGreen, int nBlue) { return qRgb(nRed, nGreen, nBlue); }

/// Sets one pixel's bytes in an image of one plane.
void SetPixel(KxApi::IKxImage& image, size_t x, size_t y, std::initializer_list<unsigned char> bytes);

/// A Mono8 image whose pixels tell their place: value = x + 16 y, modulo 256.
ImageBufferPtr MakeRamp(size_t nWidth, size_t nHeight);

/// An image window that is shown with a size of its scroll area.
class ImageViewTest : public GuiTest
{
protected:
    ImageViewTest();
    void TearDown() override;

    void ShowWindow();

    KxApi::CDisplayImagePartDlg& Dialog() const;
    KxApi::CDisplayImageWidget& Widget() const;
    CDisplayImageScrollArea& ScrollArea() const;

    /// Gives the scroll area a size.
    void SetAreaSize(int nWidth, int nHeight) const;

    /// Registers the image and has it painted.
    void ShowImage(KxApi::IKxImage* pImage) const;
    /// The same for a setting that changed.
    void Refresh() const;

    /// Colour that the widget shows at a place of its own.
    QRgb ShownAt(int x, int y) const;

    /// The image pixel for a place in the widget, asked for as the application does.
    QPoint ImagePixelAt(const QPoint& ptWidget) const;

    /// The entry of a menu or of the menus below it, by its text.
    static QAction* FindAction(const QWidget& menu, const QString& strText);
    QAction* Entry(const QString& strText) const;
    /// Texts of the checked entries of the menu in which an entry of this text stands.
    QStringList CheckedBeside(const QString& strText) const;

    /// Turns the wheel over a place of the widget, with or without Ctrl.
    void TurnWheel(const QPoint& ptWidget, int nDelta, bool bCtrl) const;

    CEventLog m_objLog;
    ImageWndPtr m_pWnd;
};

} // namespace KxTest
