// SPDX-License-Identifier: Apache-2.0
// Images in ".csv" files: a first line with the names of the columns, then a line for each of the image's.

#include "COutputFile.h"
#include "CsvText.h"
#include "Encoding.h"

#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxPixelComponent.h>

#include <algorithm>
#include <string>
#include <vector>

namespace KxApi
{
namespace Detail
{
namespace
{

/// Name of component k in column x: of a mosaic those of all lines until it repeats, such as "R/Gb".
std::string ColumnName(const CPixelFormatRow& row, size_t k, size_t x)
{
    const size_t period = row.components[k].isMosaic ? kMosaics[row.mosaic].period : 1;
    std::string name;
    for (size_t y = 0; y < period; ++y) {
        const IKxPixelComponentInfo* const info = GetIKxPixelComponentInfo(ComponentType(row, k, x, y));
        name += y == 0 ? "" : "/";
        name += info ? info->GetName().c_str() : "";
    }
    return name;
}

void AppendNames(std::string& text, const CImageValues& values)
{
    for (size_t x = 0; x < values.Width(); ++x) {
        for (size_t k = 0; k < values.ComponentCount(); ++k) {
            text += x == 0 && k == 0 ? "" : ",";
            text += ColumnName(values.Format(), k, x);
            text += '[';
            AppendNumber(text, x);
            text += ']';
        }
    }
    text += '\n';
}

/// Plain numbers, which nearly all formats have.
void AppendPlainLine(std::string& text, const CImageValues& values, size_t y, std::vector<uint32_t>& line)
{
    const size_t components = values.ComponentCount();
    for (size_t k = 0; k < components; ++k)
        values.Read(k, 0, y, values.Width(), line.data() + k, components);
    for (const uint32_t value : line) {
        AppendNumber(text, value);
        text += ',';
    }
    text.back() = '\n';
}

void AppendAnyLine(std::string& text, IKxImage& image, const CImageValues& values, size_t y)
{
    for (size_t x = 0; x < values.Width(); ++x) {
        const IKxPixelComponent& pixel = *image.GetIKxPixelComponentValue(x, y);
        for (size_t k = 0; k < pixel.GetComponentCount(); ++k) {
            const CComponentRow& component = values.Format().components[k];
            if (component.number == KxPixelNumber_Unsigned) // which may be more than a signed number holds
                AppendNumber(text, values.Bits(k, x, y));
            else if (component.number == KxPixelNumber_Signed)
                AppendNumber(text, pixel.GetValue(k));
            else if (component.bits == 32)
                AppendNumber(text, static_cast<float>(pixel.GetFloatValue(k)));
            else
                AppendNumber(text, pixel.GetFloatValue(k));
            text += ',';
        }
    }
    text.back() = '\n';
}

} // namespace

void EncodeCsv(IKxImage& image, const CImageValues& values, COutputFile& file)
{
    const CPixelFormatRow& row = values.Format();
    const bool isPlain =
        std::all_of(row.components, row.components + row.componentCount, [](const CComponentRow& component) {
            return component.number == KxPixelNumber_Unsigned && component.bits <= 32;
        });
    std::vector<uint32_t> line(isPlain ? values.Width() * values.ComponentCount() : 0);
    std::string text;
    AppendNames(text, values);
    file.Write(text.data(), text.size());
    for (size_t y = 0; y < values.Height(); ++y) {
        text.clear();
        if (isPlain)
            AppendPlainLine(text, values, y, line);
        else
            AppendAnyLine(text, image, values, y);
        if (!file.Write(text.data(), text.size()))
            return;
    }
}

} // namespace Detail
} // namespace KxApi
