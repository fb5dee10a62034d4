// SPDX-License-Identifier: Apache-2.0
#include "ImageFileType.h"

#include <Base/GCException.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iterator>

using namespace KxApi;

namespace KxApps
{

namespace
{

struct Row
{
    const char* ending;
    EKxStillImageFileType_t type;
};

constexpr Row kRows[] = {
    {".bmp", KxStillImageFileType_Bmp},   {".jpg", KxStillImageFileType_Jpeg},
    {".jpeg", KxStillImageFileType_Jpeg}, {".tif", KxStillImageFileType_Tiff},
    {".tiff", KxStillImageFileType_Tiff}, {".png", KxStillImageFileType_Png},
    {".csv", KxStillImageFileType_Csv},   {".kxraw", KxStillImageFileType_Raw},
};

} // namespace

EKxStillImageFileType_t FileTypeOf(const std::string& fileName)
{
    std::string ending = std::filesystem::path(fileName).extension();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const auto row = std::find_if(std::begin(kRows), std::end(kRows),
                                  [&](const Row& candidate) { return ending == candidate.ending; });
    if (row == std::end(kRows))
        throw INVALID_ARGUMENT_EXCEPTION(
            "the ending of '%s' is none of .bmp, .jpg, .jpeg, .tif, .tiff, .png, .csv, .kxraw",
            fileName.c_str());
    return row->type;
}

const char* EndingOf(EKxStillImageFileType_t type)
{
    return std::find_if(std::begin(kRows), std::end(kRows),
                        [type](const Row& candidate) { return candidate.type == type; })
        ->ending; // every type has a row
}

} // namespace KxApps
