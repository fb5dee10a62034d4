// SPDX-License-Identifier: Apache-2.0
// The node-map window with 1,000 features, beside a bare tree with as many rows of plain editors. With
// KXAPI_BENCHMARK_DESCRIPTION=FILE in the environment, that description is shown too.

#include "FakePort.h"
#include "Outline.h"
#include "Platform.h"
#include "nodemap/NodeMapPropertyGridCtrl_qt.h"

#include <GenApi/GenApi.h>
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>
#include <KxApi_TL/KxApi_TL.h>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSlider>
#include <QSpinBox>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

namespace
{

using namespace KxApi;
using Clock = std::chrono::steady_clock;

constexpr int kFeatures = 1000;
constexpr int kKinds = 4;
constexpr int kPolled = 100;
constexpr int kPerCategory = 25;

/// Features of all editors in categories; every tenth is polled, and every third has "Gain" in its name.
std::string Description()
{
    std::string categories;
    std::string nodes;
    std::string root;
    for (int i = 0; i < kFeatures; ++i) {
        const std::string number = std::to_string(i);
        const std::string name = (i % 3 == 0 ? "Gain" : "Other") + number;
        const std::string reg = "R" + number;
        if (i % kPerCategory == 0) {
            root += "; pFeature C" + number;
            categories += (i == 0 ? "" : " }\n") + ("Category C" + number) + " { pFeature " + name;
        } else {
            categories += "; pFeature " + name;
        }
        const std::string at = std::to_string(0x1000 + i * 16);
        const std::string polling =
            i % (kFeatures / kPolled) == 0 ? "; Cachable WriteThrough; PollingTime 1000" : "";
        switch (i % kKinds) {
        case 0:
            nodes += "Integer " + name + " { pValue " + reg +
                     "; Min 0; Max 10000; Unit us; Representation Linear }\n";
            break;
        case 1:
            nodes += "Enumeration " + name +
                     " { EnumEntry Off { Value 0 } EnumEntry On { Value 1 } EnumEntry Auto { "
                     "Value 2 } pValue " +
                     reg + " }\n";
            break;
        case 2:
            nodes += "StringReg " + name + " { Address " + at + "; Length 16; AccessMode RW; pPort Device" +
                     polling + " }\n";
            continue;
        default:
            nodes += "Boolean " + name + " { pValue " + reg + " }\n";
            break;
        }
        nodes += "IntReg " + reg + " { Address " + at + "; Length 4; AccessMode RW; pPort Device" + polling +
                 "; Sign Unsigned; Endianess LittleEndian }\n";
    }
    return KxTest::DescriptionAsXml("Category Root { " + root.substr(2) + " }\n" + categories + " }\n" +
                                    nodes);
}

CKxApiAutoInitTerm& Sdk()
{
    static CKxApiAutoInitTerm sdk;
    return sdk;
}

/// Handles events until nothing is left to do: laid out, read and painted.
void Settle()
{
    for (int i = 0; i < 3; ++i) {
        processEventGUI(false, 0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

/// A device that is memory; its reads can take their time.
class Device
{
public:
    /// @param szFile a description; null for the one with 1,000 features.
    explicit Device(const char* szFile = nullptr)
    {
        static const std::string xml = Description();
        if (szFile)
            map._LoadXMLFromFile(szFile);
        else
            map._LoadXMLFromString(xml.c_str());
        map._Connect(&port);
    }

    KxTest::FakePort port;
    GenApi::CNodeMapRef map;
};

class Window
{
public:
    explicit Window(const char* szFile = nullptr)
        : device(szFile)
        , wnd((Sdk(), CreateIKxWnd(KxWindowType_NodeMapDisplay)))
    {
        wnd->SetPosition(0, 0, 600, 900);
        wnd->RegisterINode(device.map._GetNode("Root"), "");
    }
    ~Window()
    {
        wnd->Close();
        Settle();
    }

    void Show()
    {
        wnd->Show(nullptr, KxWindowMode_Modaless);
        Settle();
        pGrid = static_cast<QWidget*>(wnd->GetWindowHandle())->findChild<CNodeMapQtPropertyGridCtrl*>();
        if (pGrid->IsFilling())
            throw std::runtime_error("the grid isn't filled");
    }

    Device device;
    CIKxWndPtrT<IKxNodeMapDisplayWnd> wnd;
    CNodeMapQtPropertyGridCtrl* pGrid = nullptr;
};

/// What anybody could build: a row of plain editors for each feature.
class PlainTree
{
public:
    PlainTree()
    {
        Sdk();
        processEventGUI(false, 0);
        m_pTree = std::make_unique<QTreeWidget>();
        m_pTree->setColumnCount(2);
        for (int i = 0; i < kFeatures; ++i) {
            auto* const pItem = new QTreeWidgetItem(m_pTree.get(), {"Feature " + QString::number(i)});
            m_pTree->setItemWidget(pItem, 1, Editor(i));
        }
        m_pTree->resize(600, 900);
        m_pTree->show();
        Settle();
    }

    void HideOthers(int nKeep)
    {
        for (int i = 0; i < kFeatures; ++i)
            m_pTree->topLevelItem(i)->setHidden(i % 3 != nKeep);
        Settle();
    }

private:
    static QWidget* Editor(int i)
    {
        switch (i % kKinds) {
        case 0: {
            auto* const pWidget = new QWidget;
            auto* const pLayout = new QHBoxLayout(pWidget);
            pLayout->setContentsMargins(0, 0, 0, 0);
            pLayout->addWidget(new QSpinBox);
            pLayout->addWidget(new QSlider(Qt::Horizontal));
            return pWidget;
        }
        case 1: {
            auto* const pBox = new QComboBox;
            pBox->addItems({"Off", "On", "Auto"});
            return pBox;
        }
        case 2:
            return new QLineEdit("text");
        default:
            return new QCheckBox;
        }
    }

    std::unique_ptr<QTreeWidget> m_pTree;
};

void Show(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto pWindow = std::make_unique<Window>();
        Settle();
        state.ResumeTiming();
        pWindow->Show();
        state.PauseTiming();
        pWindow.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(Show)->Name("NodeMap/show")->Unit(benchmark::kMillisecond)->UseRealTime();

void ShowPeer(benchmark::State& state)
{
    for (auto _ : state) {
        auto pTree = std::make_unique<PlainTree>();
        state.PauseTiming();
        pTree.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(ShowPeer)->Name("NodeMap/show/peer")->Unit(benchmark::kMillisecond)->UseRealTime();

/// To the list of all features and back.
void Alphabetic(benchmark::State& state)
{
    Window window;
    window.Show();
    for (auto _ : state) {
        window.wnd->SetAlphabeticMode(true);
        Settle();
        window.wnd->SetAlphabeticMode(false);
        Settle();
    }
}
BENCHMARK(Alphabetic)->Name("NodeMap/alphabetic")->Unit(benchmark::kMillisecond)->UseRealTime();

/// One keystroke of a text being typed, and taken back.
void FilterKey(benchmark::State& state)
{
    Window window;
    window.wnd->SetEnableFilter(true);
    window.Show();
    const char* const texts[] = {"ga", "gai", "gain", "gai", "ga", "g", "o", "ot", "oth", "ot", "o", "g"};
    size_t n = 0;
    for (auto _ : state) {
        window.wnd->SetFilterText(texts[n++ % std::size(texts)]);
        Settle();
    }
}
BENCHMARK(FilterKey)->Name("NodeMap/filterKey")->Unit(benchmark::kMillisecond)->UseRealTime();

void FilterKeyPeer(benchmark::State& state)
{
    PlainTree tree;
    int n = 0;
    for (auto _ : state)
        tree.HideOthers(n++ % 3);
}
BENCHMARK(FilterKeyPeer)->Name("NodeMap/filterKey/peer")->Unit(benchmark::kMillisecond)->UseRealTime();

/// A tick of the polling timer.
void Tick(benchmark::State& state, bool bChanged)
{
    Window window;
    window.Show();
    unsigned char n = 0;
    for (auto _ : state) {
        if (bChanged) {
            ++n;
            for (int i = 0; i < kFeatures; i += kFeatures / kPolled)
                window.device.port.Put(0x1000 + i * 16, {static_cast<unsigned char>(n % 3)});
            window.device.map._Poll(1000);
        } else {
            window.device.map._Poll(1);
        }
        window.pGrid->RefreshSelfClearingNode();
        Settle();
    }
}
BENCHMARK_CAPTURE(Tick, unchanged, false)->Name("NodeMap/tick")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Tick, changed, true)
    ->Name("NodeMap/tickChanged")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void Close(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto pWindow = std::make_unique<Window>();
        pWindow->Show();
        state.ResumeTiming();
        pWindow->wnd->Close();
        Settle();
        state.PauseTiming();
        pWindow.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(Close)->Name("NodeMap/close")->Unit(benchmark::kMillisecond)->UseRealTime();

/// Bytes of the rows: of a window with all features above one without.
void Memory(benchmark::State& state)
{
    const auto used = [] { return static_cast<double>(mallinfo2().uordblks); };
    double rows = 0;
    for (auto _ : state) {
        Device device;
        GenApi::NodeList_t nodes;
        device.map._GetNodes(nodes); // not counted: they are the map's
        for (GenApi::INode* const pNode : nodes)
            benchmark::DoNotOptimize(pNode->GetAccessMode());
        CIKxWndPtrT<IKxNodeMapDisplayWnd> wnd((Sdk(), CreateIKxWnd(KxWindowType_NodeMapDisplay)));
        wnd->Show(nullptr, KxWindowMode_Modaless);
        Settle();
        const double empty = used();
        wnd->RegisterINode(device.map._GetNode("Root"), "");
        wnd->Refresh();
        Settle();
        rows = used() - empty;
        wnd->Close();
        Settle();
    }
    state.counters["bytes"] = rows;
}
BENCHMARK(Memory)->Name("NodeMap/memory")->Iterations(1);

/// With 5 ms for each read of a register: the longest that the event loop is kept from the user's events
/// while the window fills.
void SlowDevice(benchmark::State& state)
{
    double longest = 0;
    for (auto _ : state) {
        Window window;
        window.device.port.onRead = [] { std::this_thread::sleep_for(std::chrono::milliseconds(5)); };
        window.wnd->Show(nullptr, KxWindowMode_Modaless);
        auto* const pDialog = static_cast<QWidget*>(window.wnd->GetWindowHandle());
        for (int i = 0; i < 100; ++i) {
            const Clock::time_point begin = Clock::now();
            QMouseEvent move(QEvent::MouseMove, QPointF(10, 10), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(pDialog, &move);
            QCoreApplication::processEvents(QEventLoop::AllEvents);
            longest = std::max(longest, std::chrono::duration<double>(Clock::now() - begin).count());
        }
    }
    state.counters["longest"] = longest;
}
BENCHMARK(SlowDevice)->Name("NodeMap/slowDevice")->Iterations(1)->UseRealTime();

/// Of a file that the environment names, with memory for its camera.
const char* const kFile = std::getenv("KXAPI_BENCHMARK_DESCRIPTION");

void ShowFile(benchmark::State& state)
{
    double rows = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto pWindow = std::make_unique<Window>(kFile);
        Settle();
        state.ResumeTiming();
        pWindow->Show();
        state.PauseTiming();
        rows = 0;
        for (QTreeWidgetItemIterator it(pWindow->pGrid); *it; ++it)
            ++rows;
        pWindow.reset();
        state.ResumeTiming();
    }
    state.counters["rows"] = rows;
}

void AlphabeticFile(benchmark::State& state)
{
    Window window(kFile);
    window.Show();
    for (auto _ : state) {
        window.wnd->SetAlphabeticMode(true);
        Settle();
        window.wnd->SetAlphabeticMode(false);
        Settle();
    }
}

[[maybe_unused]] const bool bHasFile = kFile && [] {
    for (const auto& [szName, pFunction] :
         {std::pair{"NodeMap/showFile", &ShowFile}, std::pair{"NodeMap/alphabeticFile", &AlphabeticFile}})
        benchmark::RegisterBenchmark(szName, pFunction)->Unit(benchmark::kMillisecond)->UseRealTime();
    return true;
}();

} // namespace
