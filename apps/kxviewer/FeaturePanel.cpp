// SPDX-License-Identifier: Apache-2.0
#include "FeaturePanel.h"

#include "ChangedFeatures.h"
#include "ErrorBox.h"
#include "FeatureFile.h"
#include "FeatureText.h"
#include "FileDialog.h"
#include "ViewerSettings.h"

#include <KxApi_GUI/KxApi_GUI.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSplitter>
#include <QStyle>
#include <QToolButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <algorithm>

using namespace KxApi;

namespace
{

constexpr int kMostFound = 200;
const char* const kLevels[] = {"Beginner", "Expert", "Guru", "Invisible"};

GenApi::INode* FindNode(GenApi::INodeMap& map, const QString& strName)
{
    return map.GetNode(strName.toUtf8().constData());
}

bool IsListed(GenApi::INode& node)
{
    const GenApi::EInterfaceType eType = node.GetPrincipalInterfaceType();
    return node.IsFeature() && eType != GenApi::intfICategory && eType != GenApi::intfIPort;
}

/// Why the window doesn't show a feature at its level; empty when it does.
QString WhyHidden(GenApi::INode& node, GenApi::EVisibility eLevel)
{
    try {
        if (node.GetAccessMode() == GenApi::NI)
            return FeaturePanel::tr("not implemented");
    } catch (const GenICam::GenericException&) {
        return FeaturePanel::tr("can't be read");
    }
    const GenApi::EVisibility eVisibility = node.GetVisibility();
    if (eVisibility <= eLevel || eVisibility > GenApi::Invisible)
        return {};
    return FeaturePanel::tr("hidden: %1").arg(kLevels[eVisibility]);
}

QTreeWidget* NewList(QWidget* pParent, const QStringList& listTitles)
{
    auto* const pList = new QTreeWidget(pParent);
    pList->setColumnCount(listTitles.size());
    pList->setHeaderLabels(listTitles);
    pList->setRootIsDecorated(false);
    pList->setUniformRowHeights(true);
    pList->header()->setSectionResizeMode(QHeaderView::Interactive);
    return pList;
}

} // namespace

FeaturePanel::FeaturePanel(QWidget* pParent)
    : QWidget(pParent)
    , m_window(CreateIKxWnd(KxWindowType_NodeMapDisplay))
{
    MakeTools();
    m_window->SetVisibleFilter(true);
    ShowWindow();
}

void FeaturePanel::ShowWindow()
{
    m_window->Show(m_pPlace, KxWindowMode_Child);
    Tree()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(Tree(), &QTreeWidget::customContextMenuRequested, this, &FeaturePanel::ShowMenu);
}

FeaturePanel::~FeaturePanel()
{
    m_changes.clear();
    m_window.Reset();
}

void FeaturePanel::MakeTools()
{
    auto* const pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(2, 2, 2, 2);
    pLayout->setSpacing(2);

    auto* const pBar = new QHBoxLayout;
    m_pChoice = new QComboBox(this);
    m_pChoice->setObjectName("featureMap");
    m_pChoice->setAccessibleName(tr("Whose features are shown"));
    m_pChoice->setToolTip(tr("Whose features are shown"));
    connect(m_pChoice, QOverload<int>::of(&QComboBox::activated), this,
            [this](int nIndex) { Try([&] { ShowMap(nIndex); }); });
    pBar->addWidget(m_pChoice, 1);
    const auto addButton = [&](QStyle::StandardPixmap eIcon, const QString& strTip, const auto& call) {
        auto* const pButton = new QToolButton(this);
        pButton->setIcon(style()->standardIcon(eIcon));
        pButton->setToolTip(strTip);
        pButton->setAccessibleName(strTip);
        connect(pButton, &QToolButton::clicked, this, [this, call] { Try(call); });
        pBar->addWidget(pButton);
    };
    addButton(QStyle::SP_DialogOpenButton, tr("Set the features of a file"), [this] { Load(); });
    addButton(QStyle::SP_DialogSaveButton, tr("Save all features in a file"), [this] { Save(); });
    pLayout->addLayout(pBar);

    m_pSearch = new QLineEdit(this);
    m_pSearch->setObjectName("featureSearch");
    m_pSearch->setAccessibleName(tr("Search all features, shown or not"));
    m_pSearch->setPlaceholderText(tr("Search all features, shown or not"));
    m_pSearch->setClearButtonEnabled(true);
    connect(m_pSearch, &QLineEdit::textChanged, this, &FeaturePanel::Search);
    pLayout->addWidget(m_pSearch);
    m_pFoundText = new QLabel(this);
    m_pFoundText->hide();
    pLayout->addWidget(m_pFoundText);

    auto* const pSplitter = new QSplitter(Qt::Vertical, this);
    pLayout->addWidget(pSplitter, 1);
    m_pFound = NewList(pSplitter, {tr("Feature"), tr("Found")});
    m_pFound->setObjectName("foundFeatures");
    m_pFound->setAccessibleName(tr("Features that were found"));
    m_pFound->hide();
    connect(m_pFound, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* pItem) {
        Try([&] { ShowFeature(pItem->data(0, Qt::UserRole).toString()); });
    });
    m_pPlace = new QWidget(pSplitter);
    auto* const pPlaceLayout = new QVBoxLayout(m_pPlace);
    pPlaceLayout->setContentsMargins(0, 0, 0, 0);

    m_pChangedArea = new QWidget(pSplitter);
    auto* const pChangedLayout = new QVBoxLayout(m_pChangedArea);
    pChangedLayout->setContentsMargins(0, 0, 0, 0);
    pChangedLayout->addWidget(
        new QLabel(tr("Changed since connected (double click puts it back):"), m_pChangedArea));
    m_pChanged = NewList(m_pChangedArea, {tr("Feature"), tr("Before"), tr("Now")});
    m_pChanged->setObjectName("changedFeatures");
    m_pChanged->setAccessibleName(tr("Changed features"));
    connect(m_pChanged, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* pItem) {
        Try([&] {
            GenApi::INode* const pNode =
                m_pMap ? FindNode(*m_pMap, pItem->data(0, Qt::UserRole).toString()) : nullptr;
            if (pNode)
                Changes()->Undo(*pNode);
        });
    });
    pChangedLayout->addWidget(m_pChanged);
    m_pChangedArea->hide();
    pSplitter->setStretchFactor(0, 1);
    pSplitter->setStretchFactor(1, 6);
    pSplitter->setStretchFactor(2, 1);
}

void FeaturePanel::Try(const std::function<void()>& call)
{
    try {
        call();
    } catch (const GenICam::GenericException& e) {
        ShowError(this, tr("That didn't work."), e);
    }
}

void FeaturePanel::SetMaps(const QVector<FeatureMapEntry>& maps)
{
    LetGo();
    m_changes.clear();
    m_maps = maps;
    m_pChoice->clear();
    for (const FeatureMapEntry& entry : maps)
        m_pChoice->addItem(entry.strTitle);
    setEnabled(!maps.isEmpty());
    if (!maps.isEmpty())
        Try([this] { ShowMap(0); });
}

void FeaturePanel::LetGo()
{
    m_pMap = nullptr;
    if (!m_registered.isEmpty()) {
        Deregister();
        ShowWindow(); // anew: a hidden one wouldn't let go of its rows by a refresh
    }
    m_pFound->clear();
    ShowChanges();
}

void FeaturePanel::Deregister()
{
    for (void* const hRegistered : m_registered)
        m_window->DeregisterINode(hRegistered);
    m_registered.clear();
}

void FeaturePanel::ShowMap(int nIndex)
{
    LetGo();
    m_shown = m_maps[nIndex];
    m_pMap = m_shown.getMap();
    if (!m_pMap)
        throw RUNTIME_EXCEPTION("%s has no features", m_shown.strTitle.toUtf8().constData());
    Register();
    if (auto& pChanges = m_changes[m_pMap]; !pChanges) {
        pChanges = std::make_unique<ChangedFeatures>(*m_pMap, nullptr);
        connect(pChanges.get(), &ChangedFeatures::Changed, this, &FeaturePanel::ShowChanges);
    }
    ShowChanges();
    Search(m_pSearch->text());
}

ChangedFeatures* FeaturePanel::Changes()
{
    const auto found = m_changes.find(m_pMap);
    return found == m_changes.end() ? nullptr : found->second.get();
}

void FeaturePanel::Register()
{
    Deregister();
    for (const QString& strName : Favourites()) {
        if (GenApi::INode* const pNode = FindNode(*m_pMap, strName))
            m_registered.append(m_window->RegisterINode(pNode, tr("Favourites").toUtf8().constData()));
    }
    m_registered.append(m_window->RegisterINode(m_pMap->GetNode("Root"), ""));
    m_window->Refresh();
}

QTreeWidget* FeaturePanel::Tree()
{
    return static_cast<QWidget*>(m_window->GetWindowHandle())->findChild<QTreeWidget*>();
}

QTreeWidgetItem* FeaturePanel::CurrentItem() { return Tree()->currentItem(); }

GenApi::INode* FeaturePanel::NodeOf(QTreeWidgetItem* pItem)
{
    const QWidget* const pCell = pItem ? Tree()->itemWidget(pItem, 1) : nullptr;
    return pCell && m_pMap ? FindNode(*m_pMap, pCell->objectName()) : nullptr;
}

QTreeWidgetItem* FeaturePanel::RowOf(const QString& strName)
{
    for (QTreeWidgetItemIterator it(Tree()); *it; ++it) {
        const QWidget* const pCell = Tree()->itemWidget(*it, 1);
        if (pCell && pCell->objectName() == strName)
            return *it;
    }
    return nullptr;
}

bool FeaturePanel::ShowFeature(const QString& strName)
{
    GenApi::INode* const pNode = m_pMap ? FindNode(*m_pMap, strName) : nullptr;
    QTreeWidgetItem* const pRow = pNode ? RowOf(strName) : nullptr;
    if (!pRow || pNode->GetVisibility() > GenApi::Guru)
        return false;
    if (pNode->GetVisibility() > m_window->GetVisibility())
        m_window->SetVisibility(pNode->GetVisibility());
    if (pRow->isHidden())
        m_window->SetEnableFilter(false);
    Tree()->setCurrentItem(pRow);
    Tree()->scrollToItem(pRow, QAbstractItemView::PositionAtCenter);
    return true;
}

void FeaturePanel::Search(const QString& strText)
{
    m_pFound->clear();
    const bool bSearching = !strText.isEmpty() && m_pMap;
    m_pFound->setVisible(bSearching);
    m_pFoundText->setVisible(bSearching);
    if (!bSearching)
        return;
    int nFound = 0;
    int nHidden = 0;
    GenApi::NodeList_t nodes;
    m_pMap->GetNodes(nodes);
    for (GenApi::INode* const pNode : nodes) {
        const QString strName = TextOf(pNode->GetName());
        const QString strDisplayName = TextOf(pNode->GetDisplayName());
        if (!IsListed(*pNode) || !(strName.contains(strText, Qt::CaseInsensitive) ||
                                   strDisplayName.contains(strText, Qt::CaseInsensitive)))
            continue;
        const QString strHidden = WhyHidden(*pNode, m_window->GetVisibility());
        nHidden += strHidden.isEmpty() ? 0 : 1;
        if (++nFound > kMostFound)
            continue;
        auto* const pItem =
            new QTreeWidgetItem(m_pFound, {strDisplayName, strHidden.isEmpty() ? tr("shown") : strHidden});
        pItem->setData(0, Qt::UserRole, strName);
        pItem->setToolTip(0, strName);
    }
    m_pFoundText->setText(tr("%1 found, %2 of them hidden; double click shows one").arg(nFound).arg(nHidden));
}

void FeaturePanel::ShowChanges()
{
    m_pChanged->clear();
    if (const ChangedFeatures* const pChanges = Changes()) {
        for (const ChangedFeatures::Change& change : pChanges->GetChanges()) {
            auto* const pItem = new QTreeWidgetItem(
                m_pChanged, {TextOf(change.pNode->GetDisplayName()), change.strBefore, change.strNow});
            pItem->setData(0, Qt::UserRole, TextOf(change.pNode->GetName()));
            pItem->setDisabled(change.bLocked);
            for (int nColumn = 0; change.bLocked && nColumn < m_pChanged->columnCount(); ++nColumn)
                pItem->setToolTip(nColumn, tr("It can't be put back now: it is locked, as features of the "
                                              "image are while the camera acquires"));
        }
    }
    m_pChangedArea->setVisible(m_pChanged->topLevelItemCount() > 0);
}

void FeaturePanel::ShowMenu(const QPoint& pos)
{
    QTreeWidgetItem* const pItem = Tree()->itemAt(pos);
    GenApi::INode* const pNode = NodeOf(pItem);
    if (!pNode || pNode->GetPrincipalInterfaceType() == GenApi::intfICategory)
        return;
    Tree()->setCurrentItem(pItem);
    const QString strName = TextOf(pNode->GetName());
    const auto copy = [](const QString& strText) { QApplication::clipboard()->setText(strText); };
    QMenu menu;
    menu.addAction(Favourites().contains(strName) ? tr("Remove from favourites") : tr("Add to favourites"),
                   [&] { Try([&] { ToggleFavourite(strName); }); });
    menu.addSeparator();
    menu.addAction(tr("Copy as kx line"),
                   [&] { copy(SetLine(*pNode, m_shown.strCamera, m_shown.strModule)); });
    menu.addAction(tr("Copy as C++"), [&] { copy(CppLine(*pNode)); });
    menu.addAction(tr("Copy name"), [&] { copy(strName); });
    menu.exec(Tree()->viewport()->mapToGlobal(pos));
}

QStringList FeaturePanel::Favourites() const
{
    return ViewerSettings().value("favourites/" + m_shown.strModel).toStringList();
}

void FeaturePanel::ToggleFavourite(const QString& strName)
{
    QStringList list = Favourites();
    if (!list.removeOne(strName))
        list.append(strName);
    ViewerSettings().setValue("favourites/" + m_shown.strModel, list);
    Register();
}

void FeaturePanel::Save()
{
    const QString strFile =
        m_pMap ? ChooseFile(this, FileChoice::Save, tr("Save features"), "features", {tr("Features (*.txt)")})
               : QString();
    if (!strFile.isEmpty())
        Kx::SaveFeatures(*m_pMap, strFile.toStdString());
}

void FeaturePanel::Load()
{
    const QString strFile =
        m_pMap ? ChooseFile(this, FileChoice::Open, tr("Set features"), "features", {tr("Features (*.txt)")})
               : QString();
    if (!strFile.isEmpty())
        Kx::LoadFeatures(*m_pMap, strFile.toStdString());
}
