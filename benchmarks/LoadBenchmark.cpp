// SPDX-License-Identifier: Apache-2.0
// Loading a description until every node is got by name: time, memory, growth.

#include "LargeDescription.h"
#include "Peer.h"

#include <GenApi/GenApi.h>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using Bench::PeerMap;

// Both libraries get the same work: parse, then find every name.
class OwnMap
{
public:
    explicit OwnMap(const GenICam::gcstring& xml) { m_map._LoadXMLFromString(xml); }

    GenApi::INode* GetNode(const GenICam::gcstring& name) const { return m_map._GetNode(name); }

    size_t GetNodes(const std::vector<GenICam::gcstring>& names) const
    {
        size_t found = 0;
        for (const GenICam::gcstring& name : names)
            found += GetNode(name) != nullptr ? 1U : 0U;
        return found;
    }

    std::vector<std::string> Names() const
    {
        GenApi::NodeList_t nodes;
        m_map._GetNodes(nodes);
        std::vector<std::string> names;
        for (const GenApi::INode* const node : nodes)
            names.emplace_back(node->GetName().c_str());
        return names;
    }

private:
    GenApi::CNodeMapRef m_map;
};

// A description and the names of its nodes, in the form each library takes.
struct Input
{
    explicit Input(const std::string& text)
        : xml(text)
        , ownXml(text.data(), text.size())
        , names(OwnMap(ownXml).Names())
        , ownNames(names.begin(), names.end())
    {
        GenApi::CNodeMapRef::_ClearXMLCache();
    }

    std::string xml;
    GenICam::gcstring ownXml;
    std::vector<std::string> names;
    std::vector<GenICam::gcstring> ownNames;
};

const Input& Large()
{
    static const Input input(Bench::LargeDescription());
    return input;
}

void LoadOwn(const Input& input)
{
    const OwnMap map(input.ownXml);
    if (map.GetNodes(input.ownNames) != input.names.size())
        throw std::runtime_error("nodes are missing");
}

void LoadFirst(benchmark::State& state)
{
    const Input& input = Large();
    for (auto _ : state) {
        LoadOwn(input);
        GenApi::CNodeMapRef::_ClearXMLCache();
    }
    state.counters["nodes"] = static_cast<double>(input.names.size());
    state.counters["fileBytes"] = static_cast<double>(input.xml.size());
}
BENCHMARK(LoadFirst)->Name("Load/first")->Unit(benchmark::kMillisecond);

void LoadSecond(benchmark::State& state)
{
    const Input& input = Large();
    const OwnMap first(input.ownXml);
    for (auto _ : state)
        LoadOwn(input);
}
BENCHMARK(LoadSecond)->Name("Load/second")->Unit(benchmark::kMillisecond);

void LoadPeer(benchmark::State& state)
{
    const Input& input = Large();
    for (auto _ : state)
        benchmark::DoNotOptimize(PeerMap(input.xml, PeerMap::Device::None).GetNodes(input.names));
}
BENCHMARK(LoadPeer)->Name("Load/peer")->Unit(benchmark::kMillisecond);

// Heap that a map takes after every node was got by name.
void MeasureMemory(benchmark::State& state, const std::function<std::shared_ptr<void>()>& make)
{
    const auto heap = [] {
        const struct mallinfo2 info = mallinfo2();
        return info.uordblks + info.hblkhd;
    };
    size_t bytes = 0;
    for (auto _ : state) {
        const size_t before = heap();
        const std::shared_ptr<void> map = make();
        bytes = heap() - before;
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}

std::shared_ptr<void> MakeOwn(const Input& input)
{
    const auto map = std::make_shared<OwnMap>(input.ownXml);
    map->GetNodes(input.ownNames);
    return map;
}

void MemoryFirst(benchmark::State& state)
{
    const Input& input = Large();
    GenApi::CNodeMapRef::_ClearXMLCache();
    MeasureMemory(state, [&] { return MakeOwn(input); });
}
BENCHMARK(MemoryFirst)->Name("Memory/first")->Iterations(1);

void MemorySecond(benchmark::State& state)
{
    const Input& input = Large();
    const auto first = MakeOwn(input);
    MeasureMemory(state, [&] { return MakeOwn(input); });
}
BENCHMARK(MemorySecond)->Name("Memory/second")->Iterations(1);

void MemoryPeer(benchmark::State& state)
{
    const Input& input = Large();
    // The first map of a process registers types, which later ones don't pay for.
    PeerMap(input.xml, PeerMap::Device::None).GetNodes(input.names);
    MeasureMemory(state, [&] {
        const auto map = std::make_shared<PeerMap>(input.xml, PeerMap::Device::None);
        map->GetNodes(input.names);
        return map;
    });
}
BENCHMARK(MemoryPeer)->Name("Memory/peer")->Iterations(1);

void ScaleLoad(benchmark::State& state)
{
    const Input input(Bench::GenerateDescription(static_cast<size_t>(state.range(0))));
    for (auto _ : state) {
        LoadOwn(input);
        GenApi::CNodeMapRef::_ClearXMLCache();
    }
    state.counters["perNode"] =
        benchmark::Counter(static_cast<double>(input.names.size()),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(ScaleLoad)->Name("Scale/load")->Arg(500)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

void ScaleGetNode(benchmark::State& state)
{
    const Input input(Bench::GenerateDescription(static_cast<size_t>(state.range(0))));
    const OwnMap map(input.ownXml);
    map.GetNodes(input.ownNames);
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(map.GetNode(input.ownNames[i]));
        i = i + 1 < input.ownNames.size() ? i + 1 : 0;
    }
}
BENCHMARK(ScaleGetNode)->Name("Scale/getNode")->Arg(500)->Arg(5000)->Arg(50000);

} // namespace
