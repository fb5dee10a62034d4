// SPDX-License-Identifier: Apache-2.0
// Images out of a device.
#pragma once

#include <Base/GCException.h>
#include <Base/GCString.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxReleasable.h>

#include <cstddef>
#include <cstdint>

namespace KxApi
{

struct IKxAllocator;
struct IKxDevice;
struct IKxPort;

/// An image in the buffer that the producer has filled; nothing is copied. One thread at a time, together
/// with the other parts of its buffer.
///
/// A buffer of chunks alone has no image: GetImageBuffer is null then, the sizes 0, the format
/// KxPixelFormat_None. So is that of a compressed image (JPEG), whose bytes GetEncodedData has, for the image
/// library to decode. A buffer of several parts, such as range, intensity and confidence of a 3D camera, is
/// handed out as its first image, which leads to the others by GetIKxPart.
struct IKxStreamImage : IKxImageInside
{
    /// Number of the image as the device counts. Of 64 bits, of 16 bits without 0 with older GigE cameras.
    virtual uint64_t GetFrameID() const = 0;
    /// When the device took the image, in ticks of its clock; 0 when it doesn't tell.
    virtual uint64_t GetTimestamp() const = 0;
    /// The same in nanoseconds; 0 when neither producer nor device tell how long a tick is.
    virtual uint64_t GetTimestampNs() const = 0;
    /// True when parts of the image are missing, where the memory holds older pixels.
    virtual bool IsIncomplete() const = 0;
    /// Lines that arrived, up to GetImageHeight.
    virtual size_t GetDeliveredHeight() const = 0;
    /// Place of the image on the sensor, in pixels.
    virtual size_t GetOffsetX() const = 0;
    virtual size_t GetOffsetY() const = 0;

    /// Whether the buffer has chunk data. They are shown by the chunk nodes of the remote port's node map,
    /// once that has been made: those of the image handed out last, until it is given back or the stream
    /// released.
    virtual bool HasChunkData() const = 0;
    /// Lets the chunk nodes show this image's data, where several images are held at once; nothing without
    /// chunk data or node map. Raises RuntimeException when they are broken.
    virtual void AttachChunkData() = 0;

    /// Images of the buffer, this one included; 1 where a buffer is one image. Parts that are no images that
    /// the SDK knows are left out.
    virtual uint32_t GetPartCount() const = 0;
    /// An image of the buffer, in the order of the parts; each part gives the same. Valid as long as the
    /// image that was handed out. Raises OutOfRangeException.
    virtual IKxStreamImage* GetIKxPart(uint32_t nIndex) = 0;
    /// One of GenTL::PARTDATATYPE_IDS, such as PART_DATATYPE_CONFIDENCE_MAP; that of a 2D image for a buffer
    /// that is one image.
    virtual int32_t GetPartDataType() const = 0;
    /// Numbers by which parts belong together: of the source (equal ones show the same pixels), of the region
    /// of the sensor, of the purpose or component. 0 when they aren't told.
    virtual uint64_t GetSourceID() const = 0;
    virtual uint64_t GetRegionID() const = 0;
    virtual uint64_t GetPurposeID() const = 0;
    /// Bytes of a compressed image and their number; null and 0 for an image of pixels. As GetPartDataType
    /// tells, these are a JPEG or JPEG 2000 file.
    virtual const void* GetEncodedData() const = 0;
    virtual size_t GetEncodedSize() const = 0;

protected:
    ~IKxStreamImage() = default;
};

/// The form that FetchImage returns. Release gives the buffer back to the acquisition; images that are still
/// held when it ends, or when the stream is released, stay valid until then.
struct IKxStreamImageReleasable : IKxStreamImage, IKxReleasable
{
protected:
    ~IKxStreamImageReleasable() = default;
};

/// The application's receiver of images. Its calls come from one thread of the stream's, one at a time.
///
/// An exception of OnImage doesn't end the acquisition: it is counted and handed to OnError. One of OnError
/// is counted and dropped.
struct IKxStreamCallback
{
    /// An image, valid until the call returns. Images that arrive meanwhile wait in the other buffers.
    virtual void OnImage(IKxStreamImage* pImage) = 0;

    /// Something went wrong. After an image that can't be handed out the acquisition goes on; with bEnded it
    /// is over: the device was lost, or the producer fails again and again.
    virtual void OnError(const GenICam::GenericException& error, bool bEnded) = 0;

protected:
    ~IKxStreamCallback() = default;
};

/// What became of the images since the last StartAcquisition.
struct CKxStreamStatistics
{
    uint64_t nDelivered = 0;  ///< images handed to the application, incomplete ones included
    uint64_t nIncomplete = 0; ///< of these the incomplete ones
    uint64_t nLost = 0;       ///< images missing in the sequence of the frame IDs, from the first image on
    uint64_t nUnderrun = 0; ///< images lost since no buffer was free, as the producer tells; most of them are
                            ///< missing in the sequence too, so that the two aren't to be added
    uint64_t nRefused = 0;  ///< buffers that held nothing that can be handed out, empty ones included
    uint64_t nCallbackErrors = 0; ///< exceptions of the application's callback
};

/// Number of images for an acquisition without end.
inline constexpr uint64_t kKxEndless = 0xFFFFFFFFFFFFFFFF;
/// Buffers of a stream when nothing else is asked for, and the most that can be.
inline constexpr uint32_t kKxDefaultBufferCount = 8;
inline constexpr uint32_t kKxMaxBufferCount = 4096;

/// An open stream. Any thread; calls that start and stop take turns.
///
/// States: idle, acquiring. StartAcquisition makes the stream acquire; StopAcquisition, the last of the
/// images that were asked for, or an error (OnError with bEnded) makes it idle again.
struct IKxStream
{
    virtual IKxDevice* GetIKxDevice() const = 0;
    virtual GenICam::gcstring GetID() const = 0;
    /// The stream module's port.
    virtual IKxPort* GetIKxPort() = 0;

    /// Number of buffers from the next start on, more where the producer needs more. Raises
    /// OutOfRangeException below 1 and above kKxMaxBufferCount.
    virtual void SetBufferCount(uint32_t nCount) = 0;
    virtual uint32_t GetBufferCount() const = 0;
    /// Source of the buffers' memory from the next start on, null for the process's own memory. Not owned;
    /// told by OnDeregister when another one has taken its place, or the stream is released, and its last
    /// buffer is gone.
    virtual void SetAllocator(IKxAllocator* pAllocator) = 0;
    /// Bytes of a buffer, as the device is set now. Raises RuntimeException when neither producer nor device
    /// tell.
    virtual size_t GetPayloadSize() const = 0;

    /// Announces buffers, starts the stream and then the device (AcquisitionStart). The features that the
    /// images depend on are locked meanwhile (TLParamsLocked). After an error everything is as before.
    /// @param pCallback receives the images, not owned, until the acquisition has ended; null when FetchImage
    /// is to give them.
    /// @param nImages ends the acquisition after that many images; kKxEndless for none.
    /// Raises LogicalErrorException when the stream is acquiring, AccessException when the device is open
    /// read-only, InvalidArgumentException for 0 images, BadAllocException, CKxGenTLErrorException.
    virtual void StartAcquisition(IKxStreamCallback* pCallback, uint64_t nImages) = 0;

    /// Ends the acquisition; nothing when there is none. It waits for a run of the callback that is under
    /// way, after which none comes; a FetchImage that waits returns. From inside the callback it returns at
    /// once, and the acquisition ends when the callback does. Not to be called with a lock that the callback
    /// wants, nor with that of the remote port's node map.
    /// Raises what stopping the device or the stream raised, after all else has been done; RuntimeException
    /// when the producer doesn't return from its wait for images, which then is left alone.
    virtual void StopAcquisition() = 0;

    virtual bool IsAcquiring() const = 0;

    /// Waits for the next image; null when the time is over, or the acquisition. Raises LogicalErrorException
    /// when images go to a callback, or when none was started; in place of an image what was wrong with its
    /// buffer, after which the acquisition goes on; and the error by which the acquisition ended, if it did.
    /// @param nTimeoutMs milliseconds; 0 takes an image that is there.
    virtual IKxStreamImageReleasable* FetchImage(uint32_t nTimeoutMs) = 0;

    virtual CKxStreamStatistics GetStatistics() const = 0;

protected:
    ~IKxStream() = default;
};

/// The form that IKxDevice::OpenIKxStream returns. Release ends the acquisition as StopAcquisition does, with
/// its errors dropped, and closes the stream; from inside the callback, when that returns.
struct IKxStreamReleasable : IKxStream, IKxReleasable
{
protected:
    ~IKxStreamReleasable() = default;
};

} // namespace KxApi
