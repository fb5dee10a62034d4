// SPDX-License-Identifier: Apache-2.0

#include "Description.h"
#include "common/gentl/Error.h"

#include <minizip/zip.h>

#include <cstdio>
#include <cstdlib>

namespace KxProducer
{
namespace
{

/// Memory that a C stream writes into.
struct CMemory
{
    CMemory() = default;
    CMemory(const CMemory&) = delete;
    CMemory& operator=(const CMemory&) = delete;
    ~CMemory() { std::free(data); }

    char* data = nullptr;
    size_t size = 0;
};

// In place of opening a file; the other functions of files serve the stream as well.
void* OpenMemory(void* opaque, const void*, int)
{
    auto* const memory = static_cast<CMemory*>(opaque);
    return open_memstream(&memory->data, &memory->size);
}

} // namespace

std::string Zip(const std::string& name, const std::string& content)
{
    CMemory memory;
    zlib_filefunc64_def functions{};
    fill_fopen64_filefunc(&functions);
    functions.zopen64_file = &OpenMemory;
    functions.opaque = &memory;
    zip_fileinfo info{};
    info.tmz_date.tm_mday = 1; // archives are the same in each run
    info.tmz_date.tm_year = 2026;
    const zipFile archive = zipOpen2_64(nullptr, APPEND_STATUS_CREATE, nullptr, &functions);
    const bool isWritten =
        archive &&
        zipOpenNewFileInZip64(archive, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                              Z_DEFAULT_COMPRESSION, 0) == ZIP_OK &&
        zipWriteInFileInZip(archive, content.data(), static_cast<unsigned>(content.size())) == ZIP_OK &&
        zipCloseFileInZip(archive) == ZIP_OK;
    const bool isClosed = archive && zipClose(archive, nullptr) == ZIP_OK;
    if (!isWritten || !isClosed)
        Fail(GenTL::GC_ERR_OUT_OF_MEMORY, "There is no memory to compress %zu bytes", content.size());
    return {memory.data, memory.size};
}

} // namespace KxProducer
