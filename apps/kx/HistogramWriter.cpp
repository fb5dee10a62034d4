// SPDX-License-Identifier: Apache-2.0
#include "HistogramWriter.h"

#include <Base/GCException.h>
#include <KxApi_IP/KxImageGraph.h>
#include <KxApi_TL/IKxStream.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

using namespace KxApi;

namespace Kx
{

namespace
{

EKxGraphDataFileType_t TypeOf(const std::string& path)
{
    std::string ending = std::filesystem::path(path).extension();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (ending == ".csv")
        return KxGraphDataFileType_Csv;
    if (ending == ".kxraw")
        return KxGraphDataFileType_Raw;
    throw INVALID_ARGUMENT_EXCEPTION("the ending of '%s' is none of .csv, .kxraw", path.c_str());
}

} // namespace

HistogramWriter::HistogramWriter(const std::string& path)
    : m_path(path)
    , m_type(TypeOf(path))
    , m_list(CreateIKxGraphDataBufferListResizable(nullptr))
{}

void HistogramWriter::Note(IKxStreamImage& image)
{
    if (!image.GetImageBuffer() || image.IsIncomplete())
        return;
    m_list->Clear();
    AppendHistogram(&image, nullptr, m_list.Get());
}

void HistogramWriter::Save() const
{
    if (m_list->GetCount() == 0)
        throw RUNTIME_EXCEPTION("no image came whose histogram could be saved in '%s'", m_path.c_str());
    m_list->SaveToFile(m_type, m_path.c_str());
}

} // namespace Kx
