// SPDX-License-Identifier: Apache-2.0
// Single accesses to the nodes of a map, over plain memory.

#include "AccessDescription.h"
#include "Peer.h"

#include <GenApi/GenApi.h>

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using Bench::PeerMap;

class Memory : public GenApi::IPort
{
public:
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void* pBuffer, int64_t Address, int64_t Length) override
    {
        ++m_reads;
        std::memcpy(pBuffer, At(Address, Length), static_cast<size_t>(Length));
    }
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override
    {
        ++m_writes;
        std::memcpy(At(Address, Length), pBuffer, static_cast<size_t>(Length));
    }

    int64_t Reads() const { return m_reads; }
    int64_t Writes() const { return m_writes; }

private:
    uint8_t* At(int64_t address, int64_t length)
    {
        if (address < 0 || length < 0 || address + length > static_cast<int64_t>(m_bytes.size()))
            throw RUNTIME_EXCEPTION("Address 0x%llx is outside the memory",
                                    static_cast<unsigned long long>(address));
        return m_bytes.data() + address;
    }

    std::array<uint8_t, Bench::kMemorySize> m_bytes{};
    int64_t m_reads = 0;
    int64_t m_writes = 0;
};

struct Camera
{
    Camera()
    {
        map._LoadXMLFromString(Bench::AccessDescription().c_str());
        map._Connect(&memory);
    }

    Memory memory;
    GenApi::CNodeMapRef map;
};

// What a figure claims is checked in the run itself: a cached read that went to the port would be a different
// figure.
void Require(bool condition, const char* claim)
{
    if (!condition)
        throw std::runtime_error(std::string("not so: ") + claim);
}

void Read(benchmark::State& state)
{
    Camera camera;
    const GenApi::CIntegerPtr feature = camera.map._GetNode(Bench::kReadFeature);
    feature->SetValue(640);
    Require(feature->GetValue() == 640, "the feature holds what was written");
    const int64_t reads = camera.memory.Reads();
    for (auto _ : state)
        benchmark::DoNotOptimize(feature->GetValue());
    Require(camera.memory.Reads() == reads, "reads come from the cache");
}
BENCHMARK(Read)->Name("Access/read");

void ReadPeer(benchmark::State& state)
{
    const PeerMap map(Bench::AccessDescription(), PeerMap::Device::Memory);
    const auto feature = map.GetNode(Bench::kReadFeature);
    PeerMap::GetInteger(feature);
    for (auto _ : state)
        benchmark::DoNotOptimize(PeerMap::GetInteger(feature));
}
BENCHMARK(ReadPeer)->Name("Access/read/peer");

// Two values in turn, so that nobody could leave out the write of an equal one.
constexpr double kExposures[] = {1000, 2000};

void Write(benchmark::State& state)
{
    Camera camera;
    const GenApi::CFloatPtr feature = camera.map._GetNode(Bench::kWriteFeature);
    const int64_t writes = camera.memory.Writes();
    int64_t count = 0;
    for (auto _ : state)
        feature->SetValue(kExposures[count++ % 2]);
    Require(camera.memory.Writes() - writes == count, "each write reaches the port");
}
BENCHMARK(Write)->Name("Access/write");

void WritePeer(benchmark::State& state)
{
    const PeerMap map(Bench::AccessDescription(), PeerMap::Device::Memory);
    const auto feature = map.GetNode(Bench::kWriteFeature);
    int64_t count = 0;
    for (auto _ : state)
        PeerMap::SetFloat(feature, kExposures[count++ % 2]);
}
BENCHMARK(WritePeer)->Name("Access/write/peer");

void GetNode(benchmark::State& state)
{
    const Camera camera;
    const GenICam::gcstring name(Bench::kWriteFeature);
    Require(camera.map._GetNode(name) != nullptr, "the node exists");
    for (auto _ : state)
        benchmark::DoNotOptimize(camera.map._GetNode(name));
}
BENCHMARK(GetNode)->Name("Access/getNode");

void GetNodePeer(benchmark::State& state)
{
    const PeerMap map(Bench::AccessDescription(), PeerMap::Device::None);
    for (auto _ : state)
        benchmark::DoNotOptimize(map.GetNode(Bench::kWriteFeature));
}
BENCHMARK(GetNodePeer)->Name("Access/getNode/peer");

int64_t g_calls = 0;

void CountCall(GenApi::INode*) { ++g_calls; }

// All features hold a cached value and have a callback before each invalidation, so none can be passed over.
void Invalidate(benchmark::State& state)
{
    Camera camera;
    GenApi::INode* const source = camera.map._GetNode(Bench::kSharedRegister);
    std::vector<GenApi::CIntegerPtr> features;
    for (int i = 0; i < Bench::kDependentCount; ++i) {
        GenApi::INode* const node =
            camera.map._GetNode((Bench::kDependentFeature + std::to_string(i)).c_str());
        GenApi::Register(node, &CountCall);
        features.emplace_back(node);
    }
    g_calls = 0;
    int64_t rounds = 0;
    for (auto _ : state) {
        for (const GenApi::CIntegerPtr& feature : features)
            benchmark::DoNotOptimize(feature->GetValue());
        const auto started = std::chrono::steady_clock::now();
        source->InvalidateNode();
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count());
        ++rounds;
    }
    Require(g_calls == rounds * Bench::kDependentCount, "each feature's callback fires once");
}
BENCHMARK(Invalidate)->Name("Access/invalidate")->UseManualTime();

} // namespace
