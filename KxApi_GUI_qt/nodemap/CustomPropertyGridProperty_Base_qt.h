// SPDX-License-Identifier: Apache-2.0
// The value cell of a feature's row.
#pragma once

#include "frame/utility_qt.h"
#include "nodemap/PropertyLink_qt.h"

#include <Base/GCException.h>
#include <Base/GCString.h>
#include <GenApi/GenApi.h>

#include <QLabel>
#include <QString>
#include <QWidget>
#include <memory>
#include <vector>

class QTextEdit;

namespace KxApi
{

class CCustomPropertyGridProperty_Base;
struct IKxNodeMapDisplayWndInside;

/// Told of changes of the nodes that properties show.
struct IPropertyCtrlEvent
{
    /// The property's node changed, or something that it depends on. In the thread of the property.
    virtual void OnNodeCallback(CCustomPropertyGridProperty_Base* pProperty) = 0;

protected:
    ~IPropertyCtrlEvent() = default;
};

/// Shows the value of a node: in an editor while it can be written, as text while it can't. One class derives
/// from it for each kind of node. GUI thread.
///
/// A grid may have thousands of them, of which the screen shows some thirty. So the editor is built, and the
/// node read, by the first UpdateDisplayValue; until then a property costs an empty widget. Changes of a node
/// that isn't on the screen are only noted, and IsUpdateRequested tells of them.
class CCustomPropertyGridProperty_Base : public QWidget
{
    Q_OBJECT

public:
    /// @param pWnd the window, for its settings; may be null as long as no page is built.
    /// @param pNode the node, which has to live until Detach.
    /// @param pEvent told of the node's changes; null for nobody.
    CCustomPropertyGridProperty_Base(IKxNodeMapDisplayWndInside* pWnd, QWidget* pParent, GenApi::INode* pNode,
                                     IPropertyCtrlEvent* pEvent);
    CCustomPropertyGridProperty_Base(const CCustomPropertyGridProperty_Base&) = delete;
    CCustomPropertyGridProperty_Base& operator=(const CCustomPropertyGridProperty_Base&) = delete;
    ~CCustomPropertyGridProperty_Base() override;

    /// The node's name for users. Raises LogicalErrorException without a node, as all that reads it.
    virtual GenICam::gcstring GetName() const;
    virtual QString GetNameTooltip();
    /// Shows the widget if the node is for that level, or bForce is set; otherwise hides it. Returns which.
    virtual bool SetVisibility(GenApi::EVisibility eVisibility, bool bForce, bool bAdjustSize);

    /// Rows of the page's table about the value; empty for none.
    virtual QString GetInterfaceSpecificDescription() = 0;
    /// The page's code for this kind of node.
    virtual QString GetInterfaceSpecificDescriptionSampleCode() = 0;

    /// Appends the page about the node. Raises what reading the node raises; what was appended then stays.
    void UpdateDescription(QTextEdit* pEdit);
    /// The page's code for any kind of node.
    QString GetDescription_GetNodeAndCheckAccess();
    /// The page's code that sets the selectors of a node, outer ones first.
    static void AddSelectorDescription(QString& strOut, GenApi::INode* pNode, bool bFirst);

    void RegisterGenApiCallback();
    void DeregisterGenApiCallback() noexcept;
    void OnNodeCallback(GenApi::INode* pNode);
    /// Shows the value if it is on the screen, and otherwise notes that it has to be.
    void emitUpdate() { emit updateDisplayValueSignal(); }

    /// The node isn't touched any more; it may go.
    void Detach() noexcept;
    /// Null after Detach.
    GenApi::INode* GetNode() const { return m_pNode; }

    /// Whether what is shown has yet to be read.
    bool IsUpdateRequested() const { return m_bUpdateRequested; }
    void RequestUpdate() { m_bUpdateRequested = true; }

    /// A grid that has no place for its row on the screen keeps it hidden, which is cheap for thousands of
    /// rows; apart from that it is hidden or not as it was told.
    void SetPlaced(bool bPlaced);
    void setVisible(bool bVisible) override;

    /// Gives the editor the keyboard; false when none is shown.
    bool FocusEditor();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

signals:
    void updateDisplayValueSignal();

public slots:
    /// Reads the node and shows its value. What the reading raises is dropped; the display stays as it was.
    virtual void UpdateDisplayValue();

protected:
    /// Builds the editors. Once, before the first ShowValue. Raises nothing.
    virtual void MakeEditor() {}
    /// Brings the editor, or the label, to the node's value. Raises what the node raises.
    virtual void ShowValue(GenApi::EAccessMode eMode) = 0;
    /// Connects the editors, when they show the first value.
    virtual void ConnectEditor() {}
    /// Shows or hides label and editors as the access mode tells.
    virtual void ApplyDisplayRule(GenApi::EAccessMode eMode);

    /// Takes a new child of this as an editor. It changes nothing when the wheel turns over it, unless it was
    /// chosen before, since users scroll the grid by the wheel.
    void AddEditor(QWidget& editor, int nStretch = 0);
    QLabel& Label() { return *m_pLabel; }
    bool IsNodeWritable() const { return GenApi::IsWritable(static_cast<GenApi::INode*>(m_pNode)); }
    bool HasEditor() const { return m_pLabel != nullptr; }
    void NoteUpdated() { m_bUpdateRequested = false; }
    /// What is shown isn't true any more.
    void TellChanged();

    /// Connects a signal of an editor. No exception may reach the event loop, so what the function raises
    /// becomes the window's error event.
    template <class Sender, class... Arguments, class Class, class Function>
    void ConnectTo(Sender* pSender, void (Class::*signal)(Arguments...), Function function)
    {
        connect(pSender, signal, this, [this, function](Arguments... arguments) {
            try {
                function(arguments...);
            } catch (...) {
                TellCurrentException([this](const GenICam::GenericException& e) { TellWindow(e); });
            }
        });
    }

    bool event(QEvent* pEvent) override;
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;
    void timerEvent(QTimerEvent*) override {}

    GenApi::CNodePtr m_pNode;
    IKxNodeMapDisplayWndInside* const m_pWnd;
    bool m_bAvailable = true; // as last shown
    bool m_bWritable = true;

private:
    void Build();
    bool IsOnScreen() const;
    void TellWindow(const GenICam::GenericException& e);

    IPropertyCtrlEvent* const m_pEvent;
    std::shared_ptr<CPropertyLink> m_pLink;
    GenApi::CallbackHandleType m_hGenApiCallback = 0;
    GenApi::EVisibility m_eVisibility = GenApi::Beginner; // the level last given
    bool m_bUpdateRequested = true;
    bool m_bWantedVisible = true;
    bool m_bPlaced = true;
    QLabel* m_pLabel = nullptr;
    std::vector<QWidget*> m_vecEditors;
};

/// Runs a function; what it raises is dropped.
template <class Function>
void Dropping(Function&& function) noexcept
{
    try {
        function();
    } catch (...) { // NOLINT(bugprone-empty-catch): the node shows by its value what became of it
    }
}

} // namespace KxApi
