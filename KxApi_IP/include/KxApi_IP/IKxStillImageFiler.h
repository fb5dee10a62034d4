// SPDX-License-Identifier: Apache-2.0
// Images in files.
#pragma once

#include <Base/GCString.h>
#include <KxApi_IP/KxApi_IPLinkage.h>
#include <KxApi_TL/IKxReleasable.h>
#include <KxApi_TL/KxPixelFormat.h>
#include <KxSDKCommon/ColorMap.h>

#include <cstddef>
#include <cstdint>

namespace KxApi
{

struct IKxImage;
struct IKxImageBuffer;

/// Types of still image files; docs/files.md tells what each holds.
enum EKxStillImageFileType_t : int32_t
{
    KxStillImageFileType_Raw = 0,  ///< ".kxraw": any pixel format, pixels as they are, checksummed
    KxStillImageFileType_Bmp = 1,  ///< ".bmp"
    KxStillImageFileType_Jpeg = 2, ///< ".jpg"
    KxStillImageFileType_Tiff = 3, ///< ".tif": 8 and 16 bits
    KxStillImageFileType_Png = 4,  ///< ".png": 8 and 16 bits
    KxStillImageFileType_Csv = 5,  ///< ".csv": the values as text, one row a line
};

/// Kinds of filers that CreateIKxFiler makes.
enum EKxFilerType_t : int32_t
{
    KxFilerType_StillImage = 0,
};

/// Writes images to files and reads them. No pixel is converted: a file holds the values of the image, or the
/// type refuses the format, which IsSavable tells beforehand. JPEG alone changes values, and leaves alpha
/// out; and a colour map set on the filer changes what the picture types show of grey images. One thread at a
/// time for each filer; different filers don't disturb each other.
struct IKxStillImageFiler
{
    /// Whether images of the format can go into files of the type. False for codes that name neither.
    virtual bool IsSavable(EKxPixelFormatNamingConvention_t ePixelFormat,
                           EKxStillImageFileType_t eFileType) const = 0;

    /// Writes the image. The file appears, or replaces the one of that name, when all of it has reached the
    /// disk; after a failure the folder is as it was. Raises InvalidArgumentException when the type doesn't
    /// take the format (or is no type) or the image's lines are shorter than its width asks for,
    /// LogicalErrorException when there is no image, CKxLinuxErrorException when the file can't be written,
    /// RuntimeException when the file type refuses the size, BadAllocException; with path and cause.
    /// @param strPath in UTF-8; its ending isn't looked at.
    virtual void Save(IKxImage* pImage, EKxStillImageFileType_t eFileType,
                      const GenICam::gcstring& strPath) = 0;

    /// Reads a file of any type but CSV, which its content tells, into the buffer. A picture that names the
    /// pixel format it was saved from gets this format, in its unpacked form; others Mono8 to Mono16 by
    /// their depth, RGB8, RGBa8, RGB10 to RGB16, RGBa10 to RGBa16, or BGR8 and BGRa8 from ".bmp"; turned as
    /// the file's orientation tells. The buffer is changed only when all of the file has been read well.
    /// Raises CKxLinuxErrorException when the file can't be read, RuntimeException when it is damaged, not of
    /// a known type or larger than the limit, LogicalErrorException without a buffer, BadAllocException; with
    /// path and cause.
    virtual void Load(IKxImageBuffer* pBuffer, const GenICam::gcstring& strPath) = 0;

    /// The same for a file that lies in memory, such as the JPEG payload of a camera that compresses.
    /// @param pData nSize bytes, read during the call; the rest of a buffer behind a JPEG file may follow.
    virtual void LoadFromMemory(IKxImageBuffer* pBuffer, const void* pData, size_t nSize) = 0;

    /// Quality of JPEG files, 1 to 100; 90 at first. The setter raises OutOfRangeException.
    virtual uint32_t GetJpegQuality() const = 0;
    virtual void SetJpegQuality(uint32_t nQuality) = 0;

    /// How hard PNG files are compressed, 0 (not at all) to 9; 1 at first, since more costs far more time
    /// than it saves space. The setter raises OutOfRangeException.
    virtual uint32_t GetPngCompression() const = 0;
    virtual void SetPngCompression(uint32_t nLevel) = 0;

    /// Bytes that a loaded image may take in memory, so that a small file can't claim all of it; 4 GiB at
    /// first. The setter raises OutOfRangeException for 0.
    virtual uint64_t GetMaxLoadSize() const = 0;
    virtual void SetMaxLoadSize(uint64_t nBytes) = 0;

protected:
    ~IKxStillImageFiler() = default;
};

/// The form with the colour map, as the windows show it. A map other than the plain grey ramp makes false
/// colours of images whose pixels are one unnamed value (mono, data, confidence), in the types Bmp, Jpeg,
/// Tiff and Png; values of more than 8 bits are shown by their upper 8. Raw and Csv always hold the values.
struct IKxStillImageFilerInside : IKxStillImageFiler
{
    virtual EKxColorMapType_t GetColorMapType() const = 0;
    /// Normal at first. Raises OutOfRangeException for an unknown type.
    virtual void SetColorMapType(EKxColorMapType_t eType) = 0;
    virtual bool GetColorMapInversion() const = 0;
    virtual void SetColorMapInversion(bool bInversion) = 0;
    virtual int32_t GetColorMapPhase() const = 0;
    /// Steps by which the map is rotated, taken modulo 256.
    virtual void SetColorMapPhase(int32_t nPhase) = 0;

protected:
    ~IKxStillImageFilerInside() = default;
};

/// The form that the factory returns.
struct IKxFilerReleasable : IKxStillImageFilerInside, IKxReleasable
{
protected:
    ~IKxFilerReleasable() = default;
};

/// A new filer; the caller gives it back by Release. Any thread. Raises LogicalErrorException when the SDK is
/// not started, InvalidArgumentException for an unknown kind, BadAllocException.
KXAPI_IP_API IKxFilerReleasable* CreateIKxFiler(EKxFilerType_t eType);

} // namespace KxApi
