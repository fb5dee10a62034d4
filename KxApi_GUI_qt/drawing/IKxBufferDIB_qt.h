// SPDX-License-Identifier: Apache-2.0
// Painting into image buffers.
#pragma once

#include <KxApi_TL/KxPixelFormat.h>

#include <functional>

class QPainter;

namespace KxApi
{

struct IKxImageBuffer;

/// Has the buffer's image painted on and puts the result into the buffer, in a pixel format without alpha.
/// Raises LogicalErrorException when there is no converter, and what the conversion raises; the buffer is
/// then unchanged.
void PaintIntoBuffer(IKxImageBuffer& buffer, EKxPixelFormatNamingConvention_t ePixelFormat,
                     const std::function<void(QPainter*)>& paint);

/// The same for a method of a client.
template <class Client, class Method = void (Client::*)(QPainter*, IKxImageBuffer*)>
class CIKxBufferDIB
{
public:
    CIKxBufferDIB(Client* pClient, Method pMethod)
        : m_pClient(pClient)
        , m_pMethod(pMethod)
    {}

    void DrawOnImage(IKxImageBuffer* pBuffer, EKxPixelFormatNamingConvention_t ePixelFormat)
    {
        PaintIntoBuffer(*pBuffer, ePixelFormat,
                        [&](QPainter* pPainter) { (m_pClient->*m_pMethod)(pPainter, pBuffer); });
    }

private:
    Client* const m_pClient;
    const Method m_pMethod;
};

} // namespace KxApi
