// SPDX-License-Identifier: Apache-2.0
// What a port node says of the chunk that it stands for.
#pragma once

#include <Base/GCString.h>
#include <Base/GCTypes.h>
#include <GenApi/IPort.h>

namespace GenApi
{

/// Registers through which a port with a chunk tells of it: where its bytes are in memory, and how many.
#define CHUNK_BASE_ADDRESS_REGISTER GC_INT64_MAX
#define CHUNK_BASE_ADDRESS_REGISTER_LEN 8
#define CHUNK_LENGTH_REGISTER (GC_INT64_MAX - 15)
#define CHUNK_LENGTH_REGISTER_LEN 8

/// A port node; each has it, be it for chunks or not. Any thread.
struct GENAPI_DECL_ABSTRACT IChunkPort : virtual public IPort
{
    /// ID of the chunk as the description gives it; empty if none.
    virtual GenICam::gcstring GetChunkID() const = 0;
    /// Whether the chunk's bytes are to be kept beyond the buffer.
    virtual EYesNo CacheChunkData() const = 0;
};

} // namespace GenApi
