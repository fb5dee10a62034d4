// SPDX-License-Identifier: Apache-2.0
#include "PictureForm.h"

#include "PixelReader.h"

#include <algorithm>

namespace KxApi
{
namespace Detail
{
namespace
{

bool IsColorComponent(const CComponentRow& component)
{
    switch (component.component) {
    case KxPixelComponent_R:
    case KxPixelComponent_G:
    case KxPixelComponent_B:
    case KxPixelComponent_Alpha:
        return !component.isMosaic;
    default:
        return false;
    }
}

bool IsUnpacked(const CPixelFormatRow& row)
{
    const unsigned sampleBits = row.effectiveBits > 8 ? 16 : 8;
    return kLayouts[row.layout].planes == 1 && row.storageBits == sampleBits &&
           row.bits == sampleBits * row.componentCount;
}

bool HasSameValues(const CPixelFormatRow& a, const CPixelFormatRow& b)
{
    if (a.componentCount != b.componentCount || a.mosaic != b.mosaic)
        return false;
    for (size_t k = 0; k < a.componentCount; ++k) {
        if (ComponentType(a, k, 0, 0) != ComponentType(b, k, 0, 0))
            return false;
    }
    return true;
}

EKxPixelFormatNamingConvention_t ToFormat(const CPixelFormatRow& row)
{
    return static_cast<EKxPixelFormatNamingConvention_t>(row.code);
}

} // namespace

std::optional<CPictureForm> FindPictureForm(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    const CPixelFormatRow* const row = FindFormat(ePixelFormat);
    if (!row)
        return {};
    const CPictureForm form{row->componentCount, row->components[0].bits};
    if (form.channels == 2 || form.depth < 8 || form.depth > 16)
        return {};
    for (size_t k = 0; k < form.channels; ++k) {
        const CComponentRow& component = row->components[k];
        if (component.number != KxPixelNumber_Unsigned || component.bits != form.depth ||
            (form.channels > 1 && !IsColorComponent(component)))
            return {};
    }
    return form;
}

EKxPixelFormatNamingConvention_t UnpackedFormat(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    const CPixelFormatRow* const row = FindFormat(ePixelFormat);
    if (!row || !FindPictureForm(ePixelFormat))
        return KxPixelFormat_None;
    if (IsUnpacked(*row))
        return ePixelFormat;
    const auto* const found = std::find_if(std::begin(kFormats), std::end(kFormats), [&](const auto& other) {
        return IsUnpacked(other) && HasSameValues(*row, other);
    });
    return found != std::end(kFormats) ? ToFormat(*found) : KxPixelFormat_None;
}

EKxPixelFormatNamingConvention_t DefaultFormat(const CPictureForm& form)
{
    const EKxPixelComponent_t first = form.channels == 1 ? KxPixelComponent_Mono : KxPixelComponent_R;
    const auto fits = [&](const CPixelFormatRow& row, unsigned depth) {
        return IsUnpacked(row) && FindPictureForm(ToFormat(row)) == CPictureForm{form.channels, depth} &&
               row.components[0].component == first && row.mosaic == 0;
    };
    for (const unsigned depth : {form.depth, 16U}) {
        const auto* const found = std::find_if(std::begin(kFormats), std::end(kFormats),
                                               [&](const auto& row) { return fits(row, depth); });
        if (found != std::end(kFormats))
            return ToFormat(*found);
    }
    return KxPixelFormat_None; // never: all three forms have formats of 16 bits
}

EKxPixelFormatNamingConvention_t NamedFormat(std::string_view name, const CPictureForm& form)
{
    for (const CPixelFormatRow& row : kFormats) {
        if (name == row.name && IsUnpacked(row) && FindPictureForm(ToFormat(row)) == form)
            return ToFormat(row);
    }
    return DefaultFormat(form);
}

bool IsBlueFirst(EKxPixelFormatNamingConvention_t ePixelFormat)
{
    const CPixelFormatRow* const row = FindFormat(ePixelFormat);
    return row && row->componentCount >= 3 && row->components[0].component == KxPixelComponent_B;
}

} // namespace Detail
} // namespace KxApi
