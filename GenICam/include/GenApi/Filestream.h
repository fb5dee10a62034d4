// SPDX-License-Identifier: Apache-2.0
// Files in a device, as streams.
#pragma once

#include <Base/GCString.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>

#include <cstdint>
#include <ios>
#include <istream>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

typedef int64_t GenICam_streamsize;

namespace GenApi
{

/// What streams need of a device's files.
struct GENAPI_DECL_ABSTRACT IFileProtocolAdapter
{
    /// As FileProtocolAdapter has them.
    virtual bool attach(INodeMap* pInterface) = 0;
    virtual bool openFile(const char* pFileName, std::ios_base::openmode mode) = 0;
    virtual bool closeFile(const char* pFileName) = 0;
    virtual GenICam_streamsize write(const char* buf, int64_t offs, int64_t len, const char* pFileName) = 0;
    virtual GenICam_streamsize read(char* buf, int64_t offs, GenICam_streamsize len,
                                    const char* pFileName) = 0;
    virtual int64_t getBufSize(const char* pFileName, std::ios_base::openmode mode) = 0;
    virtual bool deleteFile(const char* pFileName) = 0;

    virtual ~IFileProtocolAdapter() {}
};

/// Works the features of the standard's file access control (FileSelector, FileOperationSelector, ...). One
/// thread at a time; each call holds the lock of the node map. Raises what the features raise, and
/// TimeoutException for an operation that takes more than a minute.
class GENAPI_DECL FileProtocolAdapter : public IFileProtocolAdapter
{
public:
    FileProtocolAdapter();
    FileProtocolAdapter(const FileProtocolAdapter&) = delete;
    FileProtocolAdapter& operator=(const FileProtocolAdapter&) = delete;
    ~FileProtocolAdapter() override;

    /// Uses the features of a node map, which must outlive the adapter; false if it has no file access.
    bool attach(INodeMap* pInterface) override;

    /// Opens a file, an entry of FileSelector, for reading (in), writing (out) or both; false if the device
    /// refuses.
    bool openFile(const char* pFileName, std::ios_base::openmode mode) override;
    /// Closes a file; false if the device refuses.
    bool closeFile(const char* pFileName) override;
    /// Deletes the content of a file; false if the device refuses.
    bool deleteFile(const char* pFileName) override;

    /// Writes `len` bytes at byte `offs` of an open file, in as many operations as the device's buffer needs.
    /// @return bytes written, fewer than `len` if the file is full. RuntimeException if the device reports a
    /// failure.
    GenICam_streamsize write(const char* buf, int64_t offs, int64_t len, const char* pFileName) override;
    /// Reads up to `len` bytes from byte `offs` on of an open file.
    /// @return bytes read, fewer than `len` at the end of the file. RuntimeException if the device reports a
    /// failure.
    GenICam_streamsize read(char* buf, int64_t offs, GenICam_streamsize len, const char* pFileName) override;

    /// Bytes that one operation can move.
    int64_t getBufSize(const char* pFileName, std::ios_base::openmode mode) override;

private:
    struct Features;
    std::unique_ptr<Features> m_features;
};

/// What the buffers of both directions have in common.
template <typename CharType, typename Traits>
class DevFileStreamBuf : public std::basic_streambuf<CharType, Traits>
{
    static_assert(sizeof(CharType) == 1, "files consist of bytes");

public:
    bool is_open() const { return m_isOpen; }

protected:
    /// False if a file is open already, or can't be opened.
    bool OpenFile(INodeMap* pInterface, const char* pFileName, std::ios_base::openmode mode)
    {
        if (m_isOpen || !m_adapter.attach(pInterface) || !m_adapter.openFile(pFileName, mode))
            return false;
        m_isOpen = true;
        m_fileName = pFileName;
        m_position = 0;
        m_buffer.resize(static_cast<size_t>(m_adapter.getBufSize(pFileName, mode)));
        return true;
    }

    bool CloseFile()
    {
        m_isOpen = false;
        return m_adapter.closeFile(m_fileName.c_str());
    }

    FileProtocolAdapter m_adapter;
    std::string m_fileName;
    std::vector<CharType> m_buffer;
    std::streamsize m_position =
        0; // of the first byte that is not in the buffer (reading), or the first that is
    bool m_isOpen = false;
};

/// Reads a file of a device.
template <typename CharType, typename Traits>
class IDevFileStreamBuf : public DevFileStreamBuf<CharType, Traits>
{
public:
    ~IDevFileStreamBuf() override
    {
        try {
            close();
        } catch (...) {
            // A device that is gone can't be told to close its file.
        }
    }

    IDevFileStreamBuf* open(INodeMap* pInterface, const char* pFileName,
                            std::ios_base::openmode mode = std::ios_base::in)
    {
        return this->OpenFile(pInterface, pFileName, mode | std::ios_base::in) ? this : nullptr;
    }

    IDevFileStreamBuf* close()
    {
        if (!this->m_isOpen)
            return nullptr;
        this->setg(nullptr, nullptr, nullptr);
        return this->CloseFile() ? this : nullptr;
    }

protected:
    typename Traits::int_type underflow() override
    {
        if (!this->m_isOpen)
            return Traits::eof();
        CharType* const begin = this->m_buffer.data();
        const std::streamsize count = this->m_adapter.read(
            reinterpret_cast<char*>(begin), this->m_position,
            static_cast<std::streamsize>(this->m_buffer.size()), this->m_fileName.c_str());
        this->m_position += count;
        this->setg(begin, begin, begin + count);
        return count == 0 ? Traits::eof() : Traits::to_int_type(*begin);
    }
};

/// Writes a file of a device.
template <typename CharType, typename Traits>
class ODevFileStreamBuf : public DevFileStreamBuf<CharType, Traits>
{
public:
    ~ODevFileStreamBuf() override
    {
        try {
            close();
        } catch (...) {
            // Who wants to know calls close before.
        }
    }

    ODevFileStreamBuf* open(INodeMap* pInterface, const char* pFileName, std::ios_base::openmode mode)
    {
        if (!this->OpenFile(pInterface, pFileName, mode | std::ios_base::out))
            return nullptr;
        Rewind();
        return this;
    }

    /// Writes what is in the buffer and closes the file; null if either fails.
    ODevFileStreamBuf* close()
    {
        if (!this->m_isOpen)
            return nullptr;
        bool written = false;
        try {
            written = Flush();
        } catch (...) {
            // The file has to be closed all the same; the result tells that its end is missing.
        }
        this->setp(nullptr, nullptr);
        return this->CloseFile() && written ? this : nullptr;
    }

protected:
    typename Traits::int_type overflow(typename Traits::int_type ch) override
    {
        if (!this->m_isOpen || !Flush())
            return Traits::eof();
        if (Traits::eq_int_type(ch, Traits::eof()))
            return Traits::not_eof(ch);
        return this->sputc(Traits::to_char_type(ch));
    }

    int sync() override { return Flush() ? 0 : -1; }

private:
    void Rewind()
    {
        CharType* const begin = this->m_buffer.data();
        this->setp(begin, begin + this->m_buffer.size());
    }

    bool Flush()
    {
        const std::streamsize count = this->pptr() - this->pbase();
        if (!this->m_isOpen || count == 0)
            return this->m_isOpen;
        const std::streamsize written = this->m_adapter.write(
            reinterpret_cast<const char*>(this->pbase()), this->m_position, count, this->m_fileName.c_str());
        this->m_position += written;
        Rewind();
        return written == count;
    }
};

/// Output stream into a file of a device. Failures set the stream's state, as with std::ofstream.
template <typename CharType, typename Traits>
class ODevFileStreamBase : public std::basic_ostream<CharType, Traits>
{
public:
    typedef ODevFileStreamBuf<CharType, Traits> filebuf_type;
    typedef std::basic_ios<CharType, Traits> ios_type;
    typedef std::basic_ostream<CharType, Traits> ostream_type;

    ODevFileStreamBase()
        : std::basic_ostream<CharType, Traits>(nullptr)
    {
        this->init(&m_buffer);
    }
    ODevFileStreamBase(INodeMap* pInterface, const char* pFileName,
                       std::ios_base::openmode mode = std::ios_base::out | std::ios_base::trunc)
        : ODevFileStreamBase()
    {
        open(pInterface, pFileName, mode);
    }

    ODevFileStreamBuf<CharType, Traits>* rdbuf() const { return &m_buffer; }
    bool is_open() const { return m_buffer.is_open(); }

    void open(INodeMap* pInterface, const char* pFileName,
              std::ios_base::openmode mode = std::ios_base::out | std::ios_base::trunc)
    {
        this->clear();
        if (!m_buffer.open(pInterface, pFileName, mode))
            this->setstate(std::ios_base::failbit);
    }

    void close()
    {
        if (!m_buffer.close())
            this->setstate(std::ios_base::failbit);
    }

private:
    mutable ODevFileStreamBuf<CharType, Traits> m_buffer;
};

/// Input stream from a file of a device.
template <typename CharType, typename Traits>
class IDevFileStreamBase : public std::basic_istream<CharType, Traits>
{
public:
    typedef IDevFileStreamBuf<CharType, Traits> filebuf_type;
    typedef std::basic_ios<CharType, Traits> ios_type;
    typedef std::basic_istream<CharType, Traits> istream_type;

    IDevFileStreamBase()
        : std::basic_istream<CharType, Traits>(nullptr)
    {
        this->init(&m_buffer);
    }
    IDevFileStreamBase(INodeMap* pInterface, const char* pFileName,
                       std::ios_base::openmode mode = std::ios_base::in)
        : IDevFileStreamBase()
    {
        open(pInterface, pFileName, mode);
    }

    IDevFileStreamBuf<CharType, Traits>* rdbuf() const { return &m_buffer; }
    bool is_open() const { return m_buffer.is_open(); }

    void open(INodeMap* pInterface, const char* pFileName, std::ios_base::openmode mode = std::ios_base::in)
    {
        this->clear();
        if (!m_buffer.open(pInterface, pFileName, mode))
            this->setstate(std::ios_base::failbit);
    }

    void close()
    {
        if (!m_buffer.close())
            this->setstate(std::ios_base::failbit);
    }

private:
    mutable IDevFileStreamBuf<CharType, Traits> m_buffer;
};

typedef ODevFileStreamBase<char, std::char_traits<char>> ODevFileStream;
typedef IDevFileStreamBase<char, std::char_traits<char>> IDevFileStream;

} // namespace GenApi
