// SPDX-License-Identifier: Apache-2.0
#include "drawing/DrawingMenu_qt.h"

#include "drawing/DrawingModel_qt.h"
#include "drawing/KxDrawBrushConfigDlg_qt.h"
#include "drawing/KxDrawFontConfigDlg_qt.h"
#include "drawing/KxDrawLineConfigDlg_qt.h"

#include <QMenu>
#include <initializer_list>

namespace KxApi
{
namespace
{

using NodeList = std::initializer_list<const char*>;

bool RunDialog(KxDrawLineConfigDlg& dialog, const IKxPen& pen)
{
    dialog.m_objPen.Assign(pen);
    return dialog.exec() == QDialog::Accepted;
}
bool RunDialog(KxDrawBrushConfigDlg& dialog, const IKxBrush& brush)
{
    dialog.m_objBrush.Assign(brush);
    return dialog.exec() == QDialog::Accepted;
}
bool RunDialog(KxDrawFontConfigDlg& dialog, const IKxFont& font)
{
    dialog.m_objFont.Assign(font);
    return dialog.exec() == QDialog::Accepted;
}

const IKxPen& Chosen(const KxDrawLineConfigDlg& dialog) { return dialog.m_objPen; }
const IKxBrush& Chosen(const KxDrawBrushConfigDlg& dialog) { return dialog.m_objBrush; }
const IKxFont& Chosen(const KxDrawFontConfigDlg& dialog) { return dialog.m_objFont; }

CKxPen& Style(CKxDrawingItem& item, const KxDrawLineConfigDlg&) { return item.GetPen(); }
CKxBrush& Style(CKxDrawingItem& item, const KxDrawBrushConfigDlg&) { return item.GetBrush(); }
CKxFont& Style(CKxDrawingItem& item, const KxDrawFontConfigDlg&) { return item.GetFont(); }

void Invalidate(CDrawingModel& model, NodeList nodes)
{
    for (const char* const szNode : nodes)
        model.InvalidateNode(szNode);
    model.OnDrawingObjectChanged();
}

/// Changes one of the tool's own styles.
template <class Dialog, auto kStyle>
void ChangeStyle(CDrawingModel& model, NodeList nodes, bool bPlainLine)
{
    Dialog dialog;
    if constexpr (std::is_same_v<Dialog, KxDrawLineConfigDlg>)
        dialog.m_bHideEndcap = dialog.m_bHideJoin = bPlainLine;
    const auto style =
        model.Looked([&] { return std::decay_t<decltype((model.*kStyle)())>((model.*kStyle)()); });
    if (!RunDialog(dialog, style))
        return;
    model.Locked([&] {
        (model.*kStyle)().Assign(Chosen(dialog));
        Invalidate(model, nodes);
    });
}

/// Changes the style of all selected objects, beginning with that of the last one.
template <class Dialog>
void ChangeSelected(CDrawingModel& model, NodeList nodes, bool)
{
    model.Locked([&] {
        const std::vector<CKxDrawingItem*> vecItems = model.Objects().Selected();
        Dialog dialog;
        if (vecItems.empty() || !RunDialog(dialog, Style(*vecItems.back(), dialog)))
            return;
        for (CKxDrawingItem* const pItem : vecItems)
            Style(*pItem, dialog).Assign(Chosen(dialog));
        Invalidate(model, nodes);
    });
}

struct CMenuRow
{
    const char* szText;
    void (*run)(CDrawingModel& model, NodeList nodes, bool bPlainLine);
    NodeList nodes; ///< whose values change
    bool bPlainLine = false;
    bool bSeparatorBefore = false;
};

// clang-format off
const CMenuRow kRows[] = {
    {"Grid Line ...", &ChangeStyle<KxDrawLineConfigDlg, &CDrawingModel::GridPen>,
        {"GridLineForegroundColorReg", "GridLineStyleReg", "GridLineWidthReg"}, true},
    {"Default Line ...", &ChangeStyle<KxDrawLineConfigDlg, &CDrawingModel::DefaultPen>,
        {"DrawingDefaultLineWidthReg", "DrawingDefaultLineStyleReg", "DrawingDefaultLineEndcapReg",
         "DrawingDefaultLineJoinReg", "DrawingDefaultLineForegroundColorReg"}, false, true},
    {"Default Brush ...", &ChangeStyle<KxDrawBrushConfigDlg, &CDrawingModel::DefaultBrush>,
        {"DrawingDefaultBrushStyleReg", "DrawingDefaultBrushForegroundColorReg",
         "DrawingDefaultBrushBackgroundColorModeReg", "DrawingDefaultBrushBackgroundColorReg",
         "DrawingDefaultBrushPolyFillModeReg"}},
    {"Default Font ...", &ChangeStyle<KxDrawFontConfigDlg, &CDrawingModel::DefaultFont>,
        {"DrawingDefaultFontHeightReg", "DrawingDefaultFontWeightReg", "DrawingDefaultFontStyleReg",
         "DrawingDefaultFontDecorationReg", "DrawingDefaultFontFamily", "DrawingDefaultFontForegroundColorReg",
         "DrawingDefaultFontBackgroundColorModeReg", "DrawingDefaultFontBackgroundColorReg"}},
    {"Selected Objects Line ...", &ChangeSelected<KxDrawLineConfigDlg>,
        {"DrawingLineWidthReg", "DrawingLineStyleReg", "DrawingLineEndcapReg", "DrawingLineJoinReg",
         "DrawingLineForegroundColorReg"}, false, true},
    {"Selected Objects Brush ...", &ChangeSelected<KxDrawBrushConfigDlg>,
        {"DrawingBrushStyleReg", "DrawingBrushForegroundColorReg", "DrawingBrushBackgroundColorModeReg",
         "DrawingBrushBackgroundColorReg", "DrawingBrushPolyFillModeReg"}},
    // No node has the name of the family's register.
    {"Selected Objects Font ...", &ChangeSelected<KxDrawFontConfigDlg>,
        {"DrawingFontHeightReg", "DrawingFontWeightReg", "DrawingFontStyleReg", "DrawingFontDecorationReg",
         "DrawingFontFamilyReg", "DrawingFontForegroundColorReg", "DrawingFontBackgroundColorModeReg",
         "DrawingFontBackgroundColorReg"}},
};
// clang-format on

} // namespace

void RunDrawingMenu(CDrawingModel& model, const QPoint& ptGlobal)
{
    QMenu menu("Context Menu");
    for (const CMenuRow& row : kRows) {
        if (row.bSeparatorBefore)
            menu.addSeparator();
        menu.addAction(row.szText)->setData(static_cast<int>(&row - kRows));
    }
    if (const QAction* const pAction = menu.exec(ptGlobal)) {
        const CMenuRow& row = kRows[pAction->data().toInt()];
        row.run(model, row.nodes, row.bPlainLine);
    }
}

} // namespace KxApi
