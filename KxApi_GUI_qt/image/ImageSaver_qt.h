// SPDX-License-Identifier: Apache-2.0
// Saving the image of a window.
#pragma once

#include "image/ImageViewSettings_qt.h"

#include <KxApi_TL/IKxImageBuffer.h>

#include <QString>
#include <functional>

namespace KxApi
{

class CImagePreview;

/// Writes the newest image, as it was registered or as it is shown, into a file that the user names. GUI
/// thread.
class CImageSaver
{
public:
    /// How the window shows and saves images.
    struct COptions
    {
        bool bPreview = false;
        /// Demosaic as the preview does, and not with the better method.
        bool bBayerAsShown = false;
        CColorMapSettings objColorMap;
        /// Draws into the converted preview; may be empty.
        std::function<void(IKxImageBuffer* pBuffer)> draw;
    };

    CImageSaver();

    /// Asks for the name and writes; nothing happens when the user gives none. Raises what goes wrong, then
    /// there is no file. The camera may go on meanwhile: what was the newest image at first is saved.
    void Save(CImagePreview& preview, const COptions& options);

private:
    QString m_strLastSaveFolder;
};

} // namespace KxApi
