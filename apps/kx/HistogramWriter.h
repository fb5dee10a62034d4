// SPDX-License-Identifier: Apache-2.0
// The histogram of an acquisition's last image.
#pragma once

#include <KxApi_IP/IKxGraphDataBufferList.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/KxApi_TL.h>

#include <string>

namespace KxApi
{
struct IKxStreamImage;
}

namespace Kx
{

/// One thread.
class HistogramWriter
{
public:
    static constexpr const char* kHelp =
        "Saves the histogram of the last image: a column for each kind of component and a row for each value "
        "(.csv), or a file that graph windows' data are saved as (.kxraw)";

    /// Raises InvalidArgumentException for another ending.
    explicit HistogramWriter(const std::string& path);

    /// An image has come; one that is incomplete doesn't count. Raises what its format objects to.
    void Note(KxApi::IKxStreamImage& image);

    /// Raises RuntimeException when no image was counted, what the disk objects to.
    void Save() const;

private:
    KxApi::CKxApiAutoInitTerm m_sdk; // lists need it
    const std::string m_path;
    KxApi::EKxGraphDataFileType_t m_type;
    KxApi::CKxAutoPtr<KxApi::IKxGraphDataBufferListResizable> m_list;
};

} // namespace Kx
