// SPDX-License-Identifier: Apache-2.0
// The menus of the image dialog.
#pragma once

#include <QAction>
#include <QMenu>
#include <QObject>

class QMenuBar;

namespace KxApi
{

/// The entries of menu bar and context menu, which are the same objects in both. They tell what the user
/// chooses, and show what they are told; of windows and converters they know nothing. An entry of a choice
/// stays checked when it is chosen again. GUI thread.
class CImageMenus : public QObject
{
    Q_OBJECT

public:
    /// @param pParent of the menus; outlives them. Raises std::bad_alloc.
    explicit CImageMenus(QWidget* pParent);

    /// Adds the menus of the menu bar, and gives the last one, which others may lengthen.
    QMenu& AddTo(QMenuBar& menuBar);
    QMenu& ContextMenu() { return m_objContextMenu; }

    /// The magnification of the fixed zoom, which may have no entry.
    void ShowMagnification(double dMagnification);
    void ShowFit();
    /// A EKxBayerInterpolationMethod_t; nothing happens for another value.
    void ShowBayerMethod(int nMethod);
    void ShowReverseY(bool bReverseY) { m_objActionReverseY.setChecked(bReverseY); }

signals:
    void saveChosen(bool bPreview);
    void fitChosen();
    void magnificationChosen(double dMagnification);
    void bayerMethodChosen(int nMethod);
    void reverseYChosen(bool bReverseY);

private:
    void BuildSave();
    void BuildZoom();
    void BuildConverter();
    /// Calls a function when an entry is chosen that isn't checked.
    template <class Function>
    void OnChoice(QAction* pAction, Function function);

    QMenu m_objContextMenu;
    QMenu m_objMenuFile;
    QMenu m_objMenuView;
    QMenu m_objMenuSave;
    QMenu m_objMenuZoom;
    QMenu m_objMenuFixedZoom;
    QMenu m_objMenuPixelConverter;
    QMenu m_objMenuBayer;
    QAction m_objActionFit;
    QAction m_objActionReverseY;
};

} // namespace KxApi
