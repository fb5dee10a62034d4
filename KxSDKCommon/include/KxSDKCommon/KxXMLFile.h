// SPDX-License-Identifier: Apache-2.0
// The description of a GenTL module, fetched through the module's port.
#pragma once

#include <Base/GCString.h>
#include <GenApi/NodeMapFactory.h>
#include <GenApi/NodeMapRef.h>
#include <GenApi/Types.h>
#include <KxSDKCommon/KxSDKCommonLinkage.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace GenApi
{
struct IPort;
}

namespace KxApi
{

class CKxGenTLLib;

/// Where a URL says that the file is.
enum EURLLocation : int32_t
{
    EURLLocation_Local = 0, ///< "local:", in the module's registers; also anything that is none of these
    EURLLocation_Http = 1,  ///< "http:"
    EURLLocation_File = 2,  ///< "file:"
};

/// Loads the description that a GenTL module publishes as "local:name.zip;address;length" (numbers in
/// hexadecimal), makes the node map from it, and keeps the file for saving. One thread at a time. All of it
/// raises BadAllocException when memory is lacking.
class KXSDK_COMMON_API CKxXMLFile
{
public:
    /// @param pGenTLLib the producer, not owned. @param hPort handle of the module's port, which outlives
    /// this object.
    CKxXMLFile(CKxGenTLLib* pGenTLLib, void* hPort, GenApi::EAccessMode eAccessMode,
               const GenICam::gcstring& strDeviceName);
    CKxXMLFile(const CKxXMLFile&) = delete;
    CKxXMLFile& operator=(const CKxXMLFile&) = delete;
    ~CKxXMLFile();

    /// Loads the file of the URL, makes the node map and connects the port under its name; nothing once that
    /// has succeeded. Raises InvalidArgumentException for a URL that isn't local, CKxGenTLErrorException when
    /// the port can't be read, OutOfRangeException for an absurd length, and what the node map factory
    /// raises.
    void CreateNodeMap(const GenICam::gcstring& strURL, GenApi::IPort* pPort,
                       const GenICam::gcstring& strPortName);

    /// The same with a file of the disk, plain or zipped by the ending of its name, where a module names one
    /// instead of publishing it. Raises RuntimeException when it can't be read or is no regular file,
    /// OutOfRangeException for an absurd length, and what the node map factory raises.
    void CreateNodeMapFromFile(const GenICam::gcstring& strPath, GenApi::IPort* pPort,
                               const GenICam::gcstring& strPortName);

    /// Null before CreateNodeMap. Owned by this object.
    GenApi::INodeMap* GetNodeMap() const;

    GenApi::EAccessMode GetAccessMode() const { return m_eAccessMode; }

    /// Cuts out the part of the description below a node, for CreateSubTreeNodeMapForChunkData; nothing
    /// before CreateNodeMap. `bFlag` lets the part's text go.
    void CreateNodeMapFactoryForChunkData(const GenICam::gcstring& strRootName, bool bFlag);

    /// Puts a node map of the part below a node, connected to the same port, into the reference in place of
    /// what it held; nothing before CreateNodeMap. `bFlag` lets the part's text go. Raises
    /// InvalidArgumentException for an unknown node.
    void CreateSubTreeNodeMap(const GenICam::gcstring& strRootName, GenApi::CNodeMapRef& objNodeMapRef,
                              bool bFlag);

    /// The same for the part cut out before, with its transport parameters locked; nothing without such a
    /// part.
    void CreateSubTreeNodeMapForChunkData(GenApi::CNodeMapRef& objNodeMapRef);

    /// Writes the file as the module gave it; a plain file without zeros at its end. Raises RuntimeException
    /// when none is loaded or the file can't be written.
    void SaveToFile(const GenICam::gcstring& strFileName) const;

    /// Name of the loaded file. Raises RuntimeException when none is loaded.
    GenICam::gcstring GetXMLFileName() const;

    /// The URL that a module publishes. Raises CKxGenTLErrorException.
    static GenICam::gcstring GetURL(CKxGenTLLib* pGenTLLib, void* hPort);

    static EURLLocation ParseURLLocation(const GenICam::gcstring& strURL);
    /// What stands between the first ':' and the first ';'.
    static GenICam::gcstring ParseURLFilePath(const GenICam::gcstring& strURL);
    /// What stands behind the last backslash; slashes separate nothing here.
    static GenICam::gcstring ParseURLFileName(const GenICam::gcstring& strPath);
    /// The hexadecimal numbers behind the first and the second ';', 0 where there is none.
    static uint64_t ParseURLLocalAddress(const GenICam::gcstring& strURL);
    static uint64_t ParseURLLocalLength(const GenICam::gcstring& strURL);
    /// Whether a name ends in "zip", in any case.
    static bool IsZipFileName(const GenICam::gcstring& strPath);

private:
    void LoadXMLFile(const GenICam::gcstring& strURL);
    void LoadFromDisk(const GenICam::gcstring& strPath);
    void MakeNodeMap(GenApi::IPort* pPort, const GenICam::gcstring& strPortName);
    void DeleteBuffer();
    void CheckLoaded() const;

    CKxGenTLLib* const m_pGenTLLib;
    void* const m_hPort;
    const GenApi::EAccessMode m_eAccessMode;
    bool m_bIsZip = false;
    GenICam::gcstring m_strFilePath;
    size_t m_nSize = 0;
    std::unique_ptr<char[]> m_pBuffer; // m_nSize bytes and a 0
    GenApi::CNodeMapRef m_objNodeMapRef{"Device"};
    std::unique_ptr<GenApi::CNodeMapFactory> m_pFactory;
    GenApi::CNodeMapFactory m_objChunkFactory;
    bool m_bCreated = false;
    GenApi::IPort* m_pPort = nullptr;
    GenICam::gcstring m_strPortName;
    const GenICam::gcstring m_strDeviceName;
};

} // namespace KxApi
