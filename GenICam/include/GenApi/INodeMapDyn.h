// SPDX-License-Identifier: Apache-2.0
// A node map that can be filled again.
#pragma once

#include <GenApi/INodeMap.h>

#include <cstddef>
#include <cstdint>

namespace GenApi
{

/// Kept for programs that look for it: no node map has it. Use CNodeMapRef or CNodeMapFactory.
struct GENAPI_DECL_ABSTRACT INodeMapDyn : virtual public INodeMap
{
    virtual void ClearAllNodes() = 0;
    virtual void LoadXMLFromFile(const GenICam::gcstring& FileName) = 0;
    virtual void LoadXMLFromFileInject(const GenICam::gcstring& TargetFileName,
                                       const GenICam::gcstring& InjectFileName) = 0;
    virtual void LoadXMLFromString(const GenICam::gcstring& XMLData) = 0;
    virtual void LoadXMLFromStringInject(const GenICam::gcstring& TargetXMLData,
                                         const GenICam::gcstring& InjectXMLData) = 0;
    virtual void PreprocessXMLFromFile(const GenICam::gcstring& XMLFileName,
                                       const GenICam::gcstring& StyleSheetFileName,
                                       const GenICam::gcstring& OutputFileName,
                                       const uint32_t XMLValidation = xvDefault) = 0;
    virtual void MergeXMLFiles(const GenICam::gcstring& TargetFileName,
                               const GenICam::gcstring& InjectedFileName,
                               const GenICam::gcstring& OutputFileName) = 0;
    virtual void ExtractIndependentSubtree(const GenICam::gcstring& XMLData,
                                           const GenICam::gcstring& InjectXMLData,
                                           const GenICam::gcstring& SubTreeRootNodeName,
                                           GenICam::gcstring& ExtractedSubtree) = 0;
    virtual void GetSupportedSchemaVersions(GenICam::gcstring_vector& SchemaVersions) = 0;
    virtual void LoadXMLFromZIPFile(const GenICam::gcstring& ZipFileName) = 0;
    virtual void LoadXMLFromZIPData(const void* zipData, size_t zipSize) = 0;
    virtual void PreprocessXMLFromZIPFile(const GenICam::gcstring& XMLFileName,
                                          const GenICam::gcstring& StyleSheetFileName,
                                          const GenICam::gcstring& OutputFileName,
                                          const uint32_t XMLValidation = xvDefault) = 0;
};

} // namespace GenApi
