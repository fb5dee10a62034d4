// SPDX-License-Identifier: Apache-2.0
#include <KxSDKCommon/Path.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace
{

constexpr mode_t kFolderMode = 0775;
constexpr size_t kMaxTempPath = 255;

/// Length of the path's parent, 0 when it has none but the root. A leading slash doesn't count.
size_t ParentLength(const std::string& path, size_t nLength)
{
    const size_t nSlash = nLength < 2 ? std::string::npos : path.rfind('/', nLength - 1);
    return nSlash == std::string::npos ? 0 : nSlash;
}

const char* TempFolder()
{
    // Somebody else's environment must not decide where a process with more rights writes.
    const bool bOwnRights = getuid() == geteuid() && static_cast<int>(getuid()) >= 0;
    const char* const szFolder = bOwnRights ? std::getenv("TMPDIR") : nullptr;
    return szFolder ? szFolder : "/tmp";
}

} // namespace

void MakePath(const GenICam::gcstring& strPath, bool bIsFilePath)
{
    std::string path = strPath.c_str();
    if (const size_t nParent = ParentLength(path, path.size()); bIsFilePath && nParent > 0)
        path.resize(nParent);

    // Up to the first folder that exists or can be made, then down again. An existing folder is no failure.
    std::vector<size_t> vecMissing;
    size_t nParent = path.size();
    while (mkdir(path.c_str(), kFolderMode) != 0 && (nParent = ParentLength(path, nParent)) > 0) {
        vecMissing.push_back(nParent);
        path[nParent] = '\0';
    }
    for (; !vecMissing.empty(); vecMissing.pop_back()) {
        path[vecMissing.back()] = '/';
        mkdir(path.c_str(), kFolderMode);
    }
}

FILE* openTempFile(const char* szName)
{
    char szPath[kMaxTempPath + 1];
    const int nLength = std::snprintf(szPath, sizeof(szPath), "%s/%s.XXXXXX", TempFolder(), szName);
    if (nLength < 0 || static_cast<size_t>(nLength) > kMaxTempPath)
        return nullptr;
    const int nFile = mkstemp(szPath);
    if (nFile < 0)
        return nullptr;
    unlink(szPath);
    FILE* const pFile = fdopen(nFile, "wb");
    if (!pFile)
        close(nFile);
    return pFile;
}
