// SPDX-License-Identifier: Apache-2.0
// The port of a transport module as the port of a node map.
#pragma once

#include <GenApi/IPort.h>
#include <KxApi_TL/CKxGenTLLib.h>
#include <KxApi_TL/IKxPortInside.h>
#include <KxSDKCommon/KxMutex.h>
#include <KxSDKCommon/KxXMLFile.h>

#include <atomic>
#include <functional>
#include <memory>

namespace KxApi
{
namespace Detail
{

/// Opens its module when the first register or the node map is asked for.
class CModulePort final : public IKxPortInside, public GenApi::IPort
{
public:
    using Opener = std::function<GenTL::PORT_HANDLE()>;

    /// What is special with a module.
    struct CTraits
    {
        bool isReadOnly = false;
        GenICam::gcstring nameIfUntold; ///< of the port in the description, should the producer not tell it
        /// Called with the node map once it is made, in the thread that asked for it first.
        std::function<void(GenApi::INodeMap&)> onNodeMap;
    };

    /// @param lib outlives this object. @param open opens the module and gives its handle; called until it
    /// succeeds.
    CModulePort(CKxGenTLLib& lib, Opener open)
        : CModulePort(lib, std::move(open), CTraits())
    {}
    CModulePort(CKxGenTLLib& lib, Opener open, CTraits traits)
        : m_lib(lib)
        , m_open(std::move(open))
        , m_traits(std::move(traits))
    {}

    GenApi::INodeMap* GetINodeMap() override;
    GenICam::gcstring GetDescriptionName() override;
    void SaveDescription(const GenICam::gcstring& strFileName) override;
    /// Forgets what the node map, if there is one, has cached. Not to be called with a lock that an opener
    /// takes.
    void Invalidate();

    GenApi::EAccessMode GetAccessMode() const override;
    void Read(void* pBuffer, int64_t Address, int64_t Length) override;
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override;

private:
    GenTL::PORT_HANDLE Handle();
    bool IsAllowed(GenTL::PORT_INFO_CMD command) const;

    CKxGenTLLib& m_lib;
    const Opener m_open;
    const CTraits m_traits;
    std::atomic<GenTL::PORT_HANDLE> m_handle{nullptr};
    CKxMutex m_mutex; // held while the map is made, and not afterwards
    std::unique_ptr<CKxXMLFile> m_file KXGC_GUARDED_BY(m_mutex);
    std::atomic<GenApi::INodeMap*> m_map{nullptr}; // that of m_file, once it is made
};

} // namespace Detail
} // namespace KxApi
