// SPDX-License-Identifier: Apache-2.0
// How the rows of the main window's actions are written.
#pragma once

#include "ActionTable.h"

#include <QString>
#include <functional>
#include <vector>

class MainWindow;
enum class FeatureSetKey;

/// A text of the actions in the user's language; marked by QT_TRANSLATE_NOOP("Actions", ...).
QString ActionText(const char* szText);

/// Collects the rows of a window, subject by subject. The rows work on the window, which outlives them.
class ActionRows
{
public:
    using Condition = std::function<bool()>;

    explicit ActionRows(MainWindow& window);

    // Each adds the rows of one menu, in the order of menu and toolbar.
    void AddFile();
    void AddView();
    void AddCamera();
    void AddAcquisition();
    void AddTools();
    void AddHelp();

    std::vector<ActionRow> Take() { return std::move(m_rows); }

private:
    /// @param szTried what a failure is told as, in the user's words. The call may raise.
    std::function<void()> Try(const char* szTried, std::function<void()> call) const;
    void Separator(ActionMenu eMenu, ActionBar eBar = ActionBar::None);

    void AddZoom();
    void AddZoomKey(const char* szId, const char* szText, const char* szKeys, double dPagesX, double dPagesY);
    void AddMarks();
    void AddFeatureSets();
    void AddFeatureSet(const char* szId, const char* szText, bool bSave, FeatureSetKey eKey);
    void AddFeatureFile(const char* szId, const char* szText, const char* szTitle, bool bSave);
    void AddRegion();
    void AddDrawing();

    MainWindow& m_window;
    std::vector<ActionRow> m_rows;
    const Condition m_hasImage, m_hasCamera;
};
