// SPDX-License-Identifier: Apache-2.0
// Images taken over, and previews made of them.
#pragma once

#include "frame/RoleRing_qt.h"

#include <GenApi/GenApi.h>
#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>

#include <atomic>
#include <functional>
#include <thread>

namespace KxApi
{

struct IKxAllocator;

/// The images of an image window: takes copies of those that come, and converts the newest for the screen
/// when somebody asks for it and it changed. A buffer that somebody may still read is never written to.
///
/// Any thread. The camera's thread pays for one copy, and never waits for a conversion. Lock order:
/// m_lockPreview or m_lockRegister, then the ring's; the converter's locks may be taken with m_lockPreview
/// held.
class CImagePreview
{
public:
    /// Who keeps a preview until he asks for the next.
    enum EKeeper : size_t
    {
        Api = 7,
        Widget = 8,
    };

    /// @param pAllocator source of the images' memory, not owned; may be null. @param onConverterChanged
    /// called with the name of a node of the converter that changed, in the thread that changed it. Raises
    /// what CreateIKxImageBuffer and CreateIKxConverter raise.
    CImagePreview(IKxAllocator* pAllocator,
                  std::function<void(const GenICam::gcstring& strNode)> onConverterChanged);
    CImagePreview(const CImagePreview&) = delete;
    CImagePreview& operator=(const CImagePreview&) = delete;

    /// Takes a copy, which is the newest image from now on. Raises InvalidArgumentException for what can't be
    /// copied.
    void Register(IKxImage* pIKxImage);
    /// Whether there ever was an image.
    bool HasImage() const { return m_bHasImage; }

    /// The newest image; it stays what it is until the next call. Raises RuntimeException "There is no
    /// available image."
    IKxImage* GetRegistered();
    /// The newest image converted, likewise. Raises the same when it can't be converted.
    IKxImage* GetConverted();
    /// The same for one of the keepers; null when there is no image. Raises what the converter raises.
    IKxImageBufferReleasable* Get(EKeeper eKeeper);
    /// The registered image that the widget's preview was made of, and that stays as long as that; null
    /// before the first one. In the thread that asks for the widget's.
    IKxImage* GetWidgetSource() const;

    /// Calls a quick function with the newest image, or with its preview, as IKxImage*; what others were
    /// handed stays what it is. Raises as GetRegistered and Get, and what the function raises.
    template <class Function>
    void LookAtRegistered(Function function)
    {
        Look(RawLatest, function);
    }
    template <class Function>
    void LookAtConverted(Function function)
    {
        const GenApi::AutoLock lock(m_lockPreview);
        Make();
        Look(ConvertedLatest, function);
    }

    /// The converter of the previews.
    IKxPixelFormatConverterInside& Converter() const { return *m_pConverter; }
    /// Whether previews get the format that the screen takes best, or the one that the converter is set to.
    void SetAutoDestination(bool bAuto);
    /// A setting changed, so that the next preview is made anew of the same image.
    void SetDirty() { m_bDirty = true; }

private:
    enum ERole : size_t
    {
        RawWrite,         // is being filled; stays there afterwards
        RawLatest,        // the newest image that was registered
        RawPreviewSource, // what the newest preview was made of
        RawWidgetSource,  // what the widget's preview was made of
        RawHandedOut,     // the registered image that the application got last
        ConvertTarget,    // is being converted into
        ConvertedLatest,  // the newest preview
        ConvertedApi = Api,
        ConvertedWidget = Widget,
        Roles
    };
    using CRing = CRoleRing<IKxImageBufferReleasable, Roles, Roles>;

    template <class Function>
    void Look(ERole eRole, Function function) const
    {
        m_objRing.Look(eRole, [&](IKxImageBufferReleasable* pBuffer) { function(CheckedImage(pBuffer)); });
    }
    static IKxImage* CheckedImage(IKxImageBufferReleasable* pBuffer);

    void WatchConverter();
    void OnConverterNode(GenApi::INode* pNode);
    /// Brings the newest preview up to date.
    void Make() KXGC_REQUIRES(m_lockPreview);
    bool CanBeShownAsItIs(const IKxImage& image) const;
    EKxPixelFormatNamingConvention_t AutoDestination(EKxPixelFormatNamingConvention_t ePixelFormat) const;
    void SetDestination(EKxPixelFormatNamingConvention_t ePixelFormat);

    const std::function<void(const GenICam::gcstring&)> m_onConverterChanged;
    std::atomic<bool> m_bHasImage{false};
    std::atomic<bool> m_bDirty{false};
    std::atomic<bool> m_bAuto{true};
    GenApi::CLock m_lockPreview;  // held for a whole conversion
    GenApi::CLock m_lockRegister; // held while an image is copied
    CRing m_objRing;
    // The thread in which a preview is just setting the converter's destination.
    std::atomic<std::thread::id> m_idOwnChange{std::thread::id()};
    CKxAutoPtr<IKxConverterReleasable, IKxPixelFormatConverterInside> m_pConverter;
};

} // namespace KxApi
