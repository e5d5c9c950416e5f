// File.h - MFC's CFile over a Win32 file handle, and CStdioFile for lines of
// text in the thread's ANSI code page.
//
//   CFileStatus status;
//   if (CFile::GetStatus(L"C:\\QM\\INIT.ini", status)) ... status.m_size ...
//
//   CStdioFile out;
//   if (out.Open(path, CFile::modeCreate | CFile::modeWrite | CFile::typeText))
//       out.WriteString(L"第一行\n");               // bytes in code page 936: ... CR LF
//
// As in MFC, Read, Write and Remove raise CFileException* on failure while
// Open reports failure through its result; the destructor closes the handle
// without throwing.
#pragma once
#include "platform/CString.h"
#include "platform/Exceptions.h"

#include <string>

// What CFile::GetStatus reports about a file or folder.
struct CFileStatus
{
    ULONGLONG m_size = 0;               // bytes; 0 for a folder
    BYTE m_attribute = 0;               // the low byte of the file attributes
    wchar_t m_szFullName[MAX_PATH] = L"";  // the absolute path
};

class QM_API CFile
{
public:
    enum OpenFlags : UINT {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        modeCreate = 0x1000,
        modeNoTruncate = 0x2000,
        typeText = 0x4000,
        typeBinary = 0x8000,
    };

    CFile() = default;
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;
    virtual ~CFile();

    // Opens `fileName` with MFC's flag meanings; an object that is already
    // open is closed first. FALSE on failure (also for a null name), with
    // the cause in `error` when one is given.
    virtual BOOL Open(const wchar_t* fileName, UINT openFlags, CFileException* error = nullptr);
    // Closes the handle; a closed object is left as it is. Throws
    // CFileException* when the platform refuses to close.
    virtual void Close();
    // Closes without ever throwing.
    virtual void Abort();

    // Bytes read, 0 at the end of the file. Throws CFileException* on failure.
    virtual UINT Read(void* buffer, UINT count);
    // Writes every byte or throws CFileException*.
    virtual void Write(const void* buffer, UINT count);
    // The current size in bytes; throws CFileException* on a closed object.
    ULONGLONG GetLength() const;
    // The name given to Open.
    CString GetFilePath() const { return m_strFileName; }

    // Size, attributes and full name of a file or folder; FALSE when it does
    // not exist or the name is null, empty or longer than MAX_PATH - 1.
    static BOOL GetStatus(const wchar_t* fileName, CFileStatus& status);
    // Deletes a file; throws CFileException* when it cannot.
    static void Remove(const wchar_t* fileName);

    HANDLE m_hFile = INVALID_HANDLE_VALUE;

protected:
    CString m_strFileName;
};

// Line-oriented text in the thread's ANSI code page (CP_THREAD_ACP). In text
// mode (CFile::typeText) every "\n" written becomes CR LF on disk.
class QM_API CStdioFile : public CFile
{
public:
    // Outcome of ReadLine.
    enum LineResult { lineRead, lineTooLong, endOfFile };

    BOOL Open(const wchar_t* fileName, UINT openFlags, CFileException* error = nullptr) override;
    void Close() override;
    void Abort() override;
    UINT Read(void* buffer, UINT count) override;

    // Reads the next line's bytes into `buffer` as a NUL-terminated string
    // without its line end (LF, or CR LF). lineTooLong when the line holds
    // more than `size` - 1 bytes: `buffer` then has its first `size` - 1
    // bytes, one fewer when the last would be the lead byte of a double-byte
    // character, and the rest of the line is what the next call reads.
    // endOfFile when nothing is left: a text that ends with a line end has
    // no empty line after it. A `size` below 2 throws CInvalidArgException*.
    LineResult ReadLine(char* buffer, UINT size);

    // Converts `text` to the ANSI code page and writes it; in text mode each
    // "\n" is written as CR LF. Throws CFileException* when the write fails,
    // CInvalidArgException* for a null text.
    void WriteString(const wchar_t* text);

private:
    bool FillBuffer();
    bool TakeByte(char& byte);

    bool m_bText = false;
    std::string m_buffer;   // bytes read ahead of the caller
    size_t m_next = 0;      // the first unread byte of m_buffer
};
