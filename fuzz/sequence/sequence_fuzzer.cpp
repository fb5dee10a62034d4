// SPDX-License-Identifier: Apache-2.0
// Reads whatever comes as a container of recorded images, as it is and with its checksums made right.
//
// Only exceptions of the GenICam family may leave a call.

#include "SequenceFormat.h"
#include "SequenceReader.h"

#include <Base/GCException.h>
#include <KxApi_TL/KxApi_TL.h>

#include <xxhash.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

using namespace KxApi;
using namespace KxApps;
using namespace KxApps::SequenceFormat;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint64_t kMaxImage = uint64_t{1} << 20;

template <typename Structure>
Structure Get(const Bytes& bytes, size_t place)
{
    Structure structure;
    std::memcpy(&structure, bytes.data() + place, sizeof structure);
    return structure;
}

template <typename Structure>
void Seal(Bytes& bytes, size_t place)
{
    auto structure = Get<Structure>(bytes, place);
    structure.checksum = XXH64(&structure, offsetof(Structure, checksum), 0);
    std::memcpy(bytes.data() + place, &structure, sizeof structure);
}

/// Makes all checksums right, which chance wouldn't.
void Mend(Bytes& bytes)
{
    if (bytes.size() < sizeof(FileHeader))
        return;
    Seal<FileHeader>(bytes, 0);
    for (size_t place = sizeof(FileHeader); bytes.size() - place >= sizeof(RecordHeader);) {
        auto header = Get<RecordHeader>(bytes, place);
        if (!std::equal(std::begin(kRecordMagic), std::end(kRecordMagic), header.magic))
            break;
        const size_t room = bytes.size() - place - sizeof header;
        header.imageChecksum =
            XXH64(bytes.data() + place + sizeof header, std::min<uint64_t>(header.size, room), 0);
        std::memcpy(bytes.data() + place, &header, sizeof header);
        Seal<RecordHeader>(bytes, place);
        if (header.size > room || Aligned(header.size) > room)
            break;
        place += sizeof header + Aligned(header.size);
    }
    if (bytes.size() < sizeof(FileHeader) + sizeof(IndexHeader) + sizeof(FileEnd))
        return;
    const size_t end = bytes.size() - sizeof(FileEnd);
    Seal<FileEnd>(bytes, end);
    const uint64_t place = Get<FileEnd>(bytes, end).indexOffset;
    if (place > end - sizeof(IndexHeader))
        return;
    auto index = Get<IndexHeader>(bytes, place);
    const uint8_t* const offsets = bytes.data() + place + sizeof index;
    index.offsetsChecksum = XXH64(offsets, static_cast<size_t>(bytes.data() + end - offsets), 0);
    std::memcpy(bytes.data() + place, &index, sizeof index);
    Seal<IndexHeader>(bytes, place);
}

template <typename Call>
bool Succeeds(const Call& call)
{
    try {
        call();
        return true;
    } catch (const GenICam::GenericException& e) {
        if (std::strlen(e.GetDescription()) > 255)
            std::abort(); // messages stay short whatever the file
        return false;
    }
}

void ReadAll(const Bytes& bytes)
{
    const auto source = [&bytes](uint64_t offset, void* data, size_t size) {
        const size_t count = offset < bytes.size() ? std::min<uint64_t>(size, bytes.size() - offset) : 0;
        if (count > 0)
            std::memcpy(data, bytes.data() + offset, count);
        return count;
    };
    SequenceReader reader(source, bytes.size(), "file");
    reader.SetMaxImageSize(kMaxImage);
    const CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer> buffer(CreateIKxImageBuffer(nullptr));
    constexpr size_t kEnough = 64; // an index may name one image any number of times
    for (size_t i = 0; i < std::min(reader.Count(), kEnough); ++i) {
        const bool isTold = Succeeds([&] { static_cast<void>(reader.About(i)); });
        const bool isRead = Succeeds([&] { reader.Read(i, *buffer); });
        if (isRead && !isTold)
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const CKxApiAutoInitTerm sdk;
    Bytes bytes(data, data + size);
    Succeeds([&] { ReadAll(bytes); });
    Mend(bytes);
    Succeeds([&] { ReadAll(bytes); });
    return 0;
}
