// SPDX-License-Identifier: Apache-2.0
// What else gets the images of a camera beside its window.
#pragma once

namespace KxApi
{
struct IKxStreamImage;
}

/// Called in the stream's thread with each image, before the window gets it. Raises nothing.
class ImageTap
{
public:
    virtual void OnImage(KxApi::IKxStreamImage& image) = 0;

protected:
    ~ImageTap() = default;
};
