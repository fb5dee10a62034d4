// SPDX-License-Identifier: Apache-2.0
// libtiff's files, whose messages are kept for exceptions.
#pragma once

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>

#include <tiffio.h>

#include <cstdarg>
#include <cstdio>
#include <memory>
#include <string_view>

namespace KxApi
{
namespace Detail
{

/// Of the description that names the pixel format.
inline constexpr std::string_view kTiffFormatKey = "PixelFormat=";

struct CTiffMessage
{
    char text[96] = "";
};

struct CTiffDeleter
{
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
    void operator()(TIFFOpenOptions* options) const { TIFFOpenOptionsFree(options); }
};

using CTiffPtr = std::unique_ptr<TIFF, CTiffDeleter>;
using CTiffOptionsPtr = std::unique_ptr<TIFFOpenOptions, CTiffDeleter>;

/// Options of a file whose first error goes into the message; warnings are dropped.
inline CTiffOptionsPtr MakeTiffOptions(CTiffMessage& message)
{
    CTiffOptionsPtr options(TIFFOpenOptionsAlloc());
    if (!options)
        throw BAD_ALLOC_EXCEPTION("No memory for a TIFF file");
    constexpr auto onError = [](TIFF*, void* context, const char*, const char* format, va_list arguments) {
        auto& first = *static_cast<CTiffMessage*>(context);
        if (!first.text[0]) // the first one tells the cause
            std::vsnprintf(first.text, sizeof first.text, format, arguments);
        return 1;
    };
    constexpr auto onWarning = [](TIFF*, void*, const char*, const char*, va_list) { return 1; };
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), onError, &message);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), onWarning, &message);
    return options;
}

// What plain files have no use for.
inline int NoTiffMap(thandle_t, void**, toff_t*) { return 0; }
inline void NoTiffUnmap(thandle_t, void*, toff_t) {}
inline int NoTiffClose(thandle_t) { return 0; }

} // namespace Detail
} // namespace KxApi
