// SPDX-License-Identifier: Apache-2.0
// Reads the values of a pixel out of an image.
#pragma once

#include <KxApi_TL/IKxPixelComponent.h>
#include <KxApi_TL/KxPixelFormat.h>

namespace KxApi
{

struct IKxImage;

namespace Detail
{
struct CPixelFormatRow;
}

/// The values of the pixel of an image that was asked for last. One thread at a time.
class KXAPI_TL_API CKxPixelComponent : public IKxPixelComponent
{
public:
    static constexpr size_t kMaxComponents = 4;

    virtual ~CKxPixelComponent() = default;

    /// Reads the pixel at x, y, both counted from 0. Nothing of the image is needed afterwards. Raises
    /// OutOfRangeException when the image has no such pixel, InvalidArgumentException when its format is
    /// unknown or its lines are shorter than its width asks for, LogicalErrorException when it is null or has
    /// no buffer; the values then stay what they were.
    void SetPixelComponent(const IKxImage* pImage, size_t x, size_t y);

    size_t GetComponentCount() const override;
    int64_t GetValue(size_t k) const override;
    double GetFloatValue(size_t k) const override;
    EKxPixelComponentType_t GetType(size_t k) const override;

private:
    void CheckIndex(size_t k) const;

    const Detail::CPixelFormatRow* m_pRow =
        nullptr; // of the image asked last, since most questions repeat the format
    size_t m_nX = 0;
    size_t m_nY = 0;
    uint64_t m_anBits[kMaxComponents] = {};
};

} // namespace KxApi
