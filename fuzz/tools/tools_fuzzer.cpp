// SPDX-License-Identifier: Apache-2.0
// Takes whatever comes as what others give to a node map: the text of a file of features or of several bags,
// a buffer of chunks, an event message, a list of recorded writes.
//
// Input: one byte that chooses who gets the rest, then the rest.

#include <GenApi/ChunkAdapterDcam.h>
#include <GenApi/ChunkAdapterGEV.h>
#include <GenApi/ChunkAdapterGenDC.h>
#include <GenApi/ChunkAdapterGeneric.h>
#include <GenApi/EventAdapter1394.h>
#include <GenApi/EventAdapterCL.h>
#include <GenApi/EventAdapterGEV.h>
#include <GenApi/EventAdapterGeneric.h>
#include <GenApi/EventAdapterU3V.h>
#include <GenApi/GenApi.h>
#include <GenApi/Persistence.h>
#include <GenApi/PortWriteList.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

using namespace GenApi;
using GenICam::gcstring;

namespace
{

constexpr const char* kXml =
    R"(<RegisterDescription ModelName="M" VendorName="V" StandardNameSpace="None" SchemaMajorVersion="1"
 SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0" SubMinorVersion="0"
 ProductGuid="1" VersionGuid="2" xmlns="http://www.genicam.org/GenApi/Version_1_1">
<Category Name="Root"><pFeature>S</pFeature><pFeature>T</pFeature><pFeature>Gain</pFeature><pFeature>Name</pFeature>
</Category>
<Enumeration Name="S"><EnumEntry Name="A"><Value>0</Value></EnumEntry><EnumEntry Name="B"><Value>1</Value></EnumEntry>
<Value>0</Value><pSelected>Gain</pSelected></Enumeration>
<Integer Name="T"><Value>0</Value><Min>0</Min><Max>2</Max><pSelected>Gain</pSelected></Integer>
<Float Name="Gain"><Streamable>Yes</Streamable><pIndex>T</pIndex><ValueIndexed Index="0">1</ValueIndexed>
<ValueIndexed Index="1">2</ValueIndexed><ValueDefault>3</ValueDefault><Min>-10</Min><Max>10</Max></Float>
<String Name="Name"><Streamable>Yes</Streamable><Value>text</Value></String>
<Register Name="Chunk"><Address>0</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>ChunkPort</pPort>
</Register>
<Register Name="LongChunk"><Address>0</Address><Length>8</Length><AccessMode>RO</AccessMode><pPort>LongPort</pPort>
</Register>
<Register Name="Event"><Address>4</Address><Length>16</Length><AccessMode>RO</AccessMode><pPort>EventPort</pPort>
</Register>
<Register Name="Memory"><Address>0</Address><Length>64</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>
</Register>
<Port Name="ChunkPort"><ChunkID>1</ChunkID><CacheChunkData>Yes</CacheChunkData></Port>
<Port Name="LongPort"><ChunkID>01010101010101010101010101010101</ChunkID></Port>
<Port Name="EventPort"><EventID>9001</EventID></Port><Port Name="Device"/></RegisterDescription>)";

class MemoryPort : public CPortImpl
{
public:
    EAccessMode GetAccessMode() const override { return RW; }
    void Read(void* buffer, int64_t address, int64_t length) override
    {
        Check(address, length);
        std::copy_n(m_bytes + address, length, static_cast<uint8_t*>(buffer));
    }
    void Write(const void* buffer, int64_t address, int64_t length) override
    {
        Check(address, length);
        std::copy_n(static_cast<const uint8_t*>(buffer), length, m_bytes + address);
    }

private:
    void Check(int64_t address, int64_t length) const
    {
        if (address < 0 || length < 0 || address > 64 || length > 64 - address)
            throw OUT_OF_RANGE_EXCEPTION("memory ends at 64");
    }
    uint8_t m_bytes[64] = {};
};

struct Map
{
    Map()
    {
        map._LoadXMLFromString(kXml);
        map._Connect(static_cast<IPort*>(&port), "Device");
    }
    operator INodeMap*() const { return map._Ptr; }

    void Read(const char* name) const
    {
        uint8_t bytes[16];
        const CRegisterPtr node(map._GetNode(name));
        if (IsReadable(node))
            node->Get(bytes, node->GetLength() < 16 ? node->GetLength() : 16);
    }

    MemoryPort port; // outlives the map
    CNodeMapRef map;
};

[[noreturn]] void Fail(const char* what)
{
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

template <class Bag>
void TakeText(const std::string& text)
{
    Bag bag, again;
    std::istringstream in(text);
    in >> bag;
    std::stringstream out;
    out << bag;
    out >> again;
    std::ostringstream second;
    second << again;
    if (out.str() != second.str())
        Fail("a text that was written is read as another");
}

void TakeBag(const std::string& text)
{
    TakeText<CFeatureBag>(text);
    const Map map;
    CFeatureBag bag;
    std::istringstream in(text);
    in >> bag;
    GenICam::gcstring_vector errors;
    if (!bag.LoadFromBag(map, true, &errors) && errors.empty())
        Fail("a load failed without an error");
}

void TakeBags(const std::string& text)
{
    TakeText<CFeatureBagger>(text);
    const Map map;
    CFeatureBagger bagger;
    std::istringstream in(text);
    in >> bagger;
    bagger.UnBag(map);
}

template <class Adapter>
void TakeChunks(const std::string& text)
{
    const Map map;
    Adapter adapter(map);
    std::vector<uint8_t> bytes(text.begin(), text.end());
    const auto size = static_cast<int64_t>(bytes.size());
    const bool fits = adapter.CheckBufferLayout(bytes.data(), size);
    bool isAttached = true;
    try {
        adapter.AttachBuffer(bytes.data(), size);
    } catch (const GenICam::RuntimeException&) {
        isAttached = false;
    }
    if (fits != isAttached)
        Fail("a layout is right and yet refused, or the other way round");
    map.Read("Chunk");
    map.Read("LongChunk");
    if (isAttached)
        adapter.UpdateBuffer(bytes.data());
    adapter.DetachBuffer();
    bytes.clear();
    bytes.shrink_to_fit();
    map.Read("Chunk"); // from what is kept
}

void TakeDescribedChunks(const std::string& text)
{
    // The parts are described by the first bytes, which nobody checks but the adapter.
    constexpr size_t kParts = 3;
    if (text.size() < kParts * sizeof(SingleChunkData_t))
        return;
    const Map map;
    SingleChunkData_t parts[kParts];
    std::memcpy(parts, text.data(), sizeof parts);
    std::vector<uint8_t> bytes(text.begin() + sizeof parts, text.end());
    CChunkAdapterGeneric adapter(map);
    adapter.AttachBuffer(bytes.data(), static_cast<int64_t>(bytes.size()), parts, kParts);
    map.Read("Chunk");
}

template <class Adapter>
void TakeEvent(const std::string& text)
{
    const Map map;
    Adapter adapter(map);
    std::vector<uint8_t> bytes(text.begin(), text.end());
    adapter.DeliverMessage(bytes.data(), static_cast<uint32_t>(bytes.size()));
    bytes.clear();
    bytes.shrink_to_fit();
    map.Read("Event");
}

void TakeNamedEvent(const std::string& text)
{
    const Map map;
    CEventAdapterGeneric adapter(map);
    const size_t end = text.find('\n');
    const std::string data = end == std::string::npos ? "" : text.substr(end + 1);
    adapter.DeliverMessage(reinterpret_cast<const uint8_t*>(data.data()), static_cast<uint32_t>(data.size()),
                           gcstring(text.substr(0, end).c_str()));
    map.Read("Event");
}

// Writes of up to 7 bytes: an address, a length with the data behind it.
void TakeWrites(const std::string& text)
{
    CPortWriteList list;
    for (size_t i = 0; i + 2 < text.size();) {
        const auto length = static_cast<int64_t>(static_cast<unsigned char>(text[i + 1]) & 7);
        const auto present = static_cast<int64_t>(text.size() - i - 2);
        list.Write(text.data() + i + 2, text[i], length < present ? length : present);
        i += 2 + static_cast<size_t>(length);
    }
    const Map map;
    const auto port = dynamic_cast<IPortReplay*>(map.map._GetNode("Device"));
    port->Replay(&list, false);
    map.Read("Memory");
}

constexpr void (*kTakers[])(const std::string&) = {
    TakeBag,
    TakeBags,
    TakeChunks<CChunkAdapterGEV>,
    TakeChunks<CChunkAdapterU3V>,
    TakeChunks<CChunkAdapterGenDC>,
    TakeChunks<CChunkAdapterDcam>,
    TakeDescribedChunks,
    TakeEvent<CEventAdapterGEV>,
    TakeEvent<CEventAdapterU3V>,
    TakeEvent<CEventAdapterCL>,
    TakeEvent<CEventAdapter1394>,
    TakeNamedEvent,
    TakeWrites,
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    try {
        kTakers[data[0] % (sizeof kTakers / sizeof kTakers[0])](
            std::string(reinterpret_cast<const char*>(data) + 1, size - 1));
    } catch (const GenICam::GenericException&) {
        // what bad input is answered with
    }
    return 0;
}
