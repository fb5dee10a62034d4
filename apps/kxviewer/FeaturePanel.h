// SPDX-License-Identifier: Apache-2.0
// The node-map window with what users of cameras want around it.
#pragma once

#include <GenApi/GenApi.h>
#include <KxApi_GUI/IKxNodeMapDisplayWnd.h>
#include <KxApi_GUI/KxWndPtrList.h>

#include <QVector>
#include <QWidget>
#include <functional>
#include <map>
#include <memory>

class ChangedFeatures;
class QComboBox;
class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

/// A node map that the panel can show.
struct FeatureMapEntry
{
    QString strTitle;                          ///< for the user
    QString strModel;                          ///< by which favourites are kept
    QString strCamera;                         ///< as kx calls it; empty for none
    QString strModule;                         ///< as kx calls it; empty for the camera's own
    std::function<GenApi::INodeMap*()> getMap; ///< called when it is chosen; may raise
};

/// A choice of node maps, the node-map window with the chosen one, and around it: a search that also finds
/// what the window hides, favourites of each model, what was changed since the map was first shown, feature
/// sets in files, and rows as text for the clipboard. GUI thread.
class FeaturePanel : public QWidget
{
    Q_OBJECT

public:
    explicit FeaturePanel(QWidget* pParent);
    ~FeaturePanel() override;

    /// Offers these maps and shows the first. They are used until the next call; an empty list lets go of
    /// all.
    void SetMaps(const QVector<FeatureMapEntry>& maps);

    KxApi::IKxNodeMapDisplayWnd& Window() { return *m_window; }

    /// Selects the row of a feature, and raises the window's level for it when it has to. False when the
    /// feature can't be shown at any level, or isn't implemented.
    bool ShowFeature(const QString& strName);

private:
    void MakeTools();
    void ShowMap(int nIndex);
    void LetGo();
    ChangedFeatures* Changes();
    void Register();
    void Deregister();
    void ShowWindow();
    QTreeWidget* Tree();
    QTreeWidgetItem* RowOf(const QString& strName);
    GenApi::INode* NodeOf(QTreeWidgetItem* pItem);
    GenApi::INode* CurrentNode() { return m_pMap ? NodeOf(CurrentItem()) : nullptr; }
    QTreeWidgetItem* CurrentItem();
    void Search(const QString& strText);
    void ShowChanges();
    void ShowMenu(const QPoint& pos);
    QStringList Favourites() const;
    void ToggleFavourite(const QString& strName);
    void Save();
    void Load();
    /// Runs what a click asks for; its exceptions are shown.
    void Try(const std::function<void()>& call);

    KxApi::CIKxWndPtrT<KxApi::IKxNodeMapDisplayWnd> m_window;
    QVector<FeatureMapEntry> m_maps;
    FeatureMapEntry m_shown;
    GenApi::INodeMap* m_pMap = nullptr; // of m_shown
    QVector<void*> m_registered;
    std::map<GenApi::INodeMap*, std::unique_ptr<ChangedFeatures>> m_changes; // of the maps that were shown
    QComboBox* m_pChoice = nullptr;
    QLineEdit* m_pSearch = nullptr;
    QTreeWidget* m_pFound = nullptr;
    QLabel* m_pFoundText = nullptr;
    QTreeWidget* m_pChanged = nullptr;
    QWidget* m_pChangedArea = nullptr;
    QWidget* m_pPlace = nullptr; // of the window
};
