// SPDX-License-Identifier: Apache-2.0
// What the dialogs for lines, brushes and fonts have in common.
#pragma once

#include <QColor>
#include <QComboBox>
#include <QDialog>
#include <QGraphicsScene>

class QGraphicsView;
class QPushButton;

namespace KxApi
{

/// A modal dialog with a sample, which is made anew whenever something changes. The caller sets the style
/// ahead of exec, and takes it from there when exec returns QDialog::Accepted. GUI thread.
class CStyleConfigDlg : public QDialog
{
    Q_OBJECT

public:
    explicit CStyleConfigDlg(QWidget* pParent = nullptr);

protected slots:
    void on_pushButtonOK_clicked() { accept(); }
    void on_pushButtonCancel_clicked() { reject(); }

protected:
    void showEvent(QShowEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;

    /// Puts the style into the controls.
    virtual void ShowStyle() = 0;
    /// Paints the sample into the scene, which is empty.
    virtual void AddSample(QGraphicsScene& scene, const QSize& size) = 0;

    /// To be called once the form is built. @param nMargin what the view's frame takes of the sample's size.
    void SetView(QGraphicsView* pView, int nMargin);
    void updateSample(const QColor& color);
    virtual void updateSample() = 0;

    /// A button that shows a colour carries it in its palette.
    static void setButtonColor(QPushButton* pButton, const QColor& color);
    static QColor getButtonColor(const QPushButton* pButton);
    /// Asks for another colour than the button's; invalid when the user keeps that.
    static QColor AskColor(QPushButton* pButton);

    /// Gives the entries of a box their places as data, which are the values of an enumeration.
    static void NumberEntries(QComboBox& box);

    /// Calls `set` with the data of an entry; a box without a current entry changes nothing.
    template <class E, class Set>
    void Take(const QComboBox& box, Set set)
    {
        if (box.currentIndex() < 0)
            return;
        set(static_cast<E>(box.currentData().toInt()));
        updateSample();
    }

private:
    QGraphicsScene m_objScene;
    QGraphicsView* m_pView = nullptr;
    int m_nMargin = 0;
};

} // namespace KxApi
