// SPDX-License-Identifier: MIT
// The file system as the component needs it: a narrow seam, so that a test can let each operation fail.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace reka {

/// An open file; closed by its destruction.
class IFile {
public:
    virtual ~IFile() = default;
    /// Reads on from the current position into `buffer`. The number of bytes that came: fewer than `size` at the end of
    /// the file and after a failure.
    virtual std::size_t Read(void* buffer, std::size_t size) = 0;
    /// Whether a read has failed, rather than come to the end.
    virtual bool HasFailed() const = 0;
    /// False unless all bytes were written.
    virtual bool Write(const void* data, std::size_t size) = 0;
    /// Moves to `offset` from the start, which may lie behind the end.
    virtual bool Seek(std::uint64_t offset) = 0;
    /// Brings what was written to the disk itself.
    virtual bool Flush() = 0;
};

/// Paths are absolute, with the separators of the platform. Nothing here throws but std::bad_alloc, and that only what
/// opens a file or gives a text. Where the system keeps files from being used by several programs at a time, what fails
/// for that is tried again for about a second, unless it says otherwise.
class IFileSystem {
public:
    virtual ~IFileSystem() = default;

    /// Null if the file can't be opened.
    virtual std::unique_ptr<IFile> OpenForReading(const std::u16string& path) = 0;
    /// An empty file in place of what is there; null if that fails.
    virtual std::unique_ptr<IFile> OpenForWriting(const std::u16string& path) = 0;

    /// False for a file that isn't there, and where the system can't tell.
    virtual bool Exists(const std::u16string& path) = 0;
    /// True if the system knows that nothing is there, and no file is about to go from there. Looks once. Takes no
    /// memory.
    virtual bool IsAbsent(const std::u16string& path) = 0;
    /// Time of the last write in units of 100 ns, of use for comparison alone; 0 for a file that can't be opened.
    virtual std::uint64_t LastWriteTime(const std::u16string& path) = 0;
    /// Tries once.
    virtual bool CreateFolder(const std::u16string& path) = 0;
    /// Replaces `to`; it gets the last-write time of `from` where that can be set. A copy that fails leaves `to` as it
    /// was if `from` can't be read, and otherwise no file rather than part of one.
    virtual bool Copy(const std::u16string& from, const std::u16string& to) = 0;
    /// The same, but fails if `to` is there already, or about to go. Tries once.
    virtual bool CopyNew(const std::u16string& from, const std::u16string& to) = 0;
    /// Fails if `to` is there already.
    virtual bool Rename(const std::u16string& from, const std::u16string& to) = 0;
    /// True once the name is free, for which programs that have the file open may have to close it.
    virtual bool Delete(const std::u16string& path) = 0;
    /// Puts a file of `size` bytes in the place of `path`, at once and for good: it is written beside the old one,
    /// brought to the disk, given the old one's access rights and then renamed. A link stays, and the file behind it is
    /// replaced; a device or a pipe is written to. False, also without memory: the old file is there as it was, and
    /// nothing beside it. The new file is made once; where others have the old one open when all is done, it may stay
    /// beside it as ".old".
    virtual bool Replace(const std::u16string& path, const void* data, std::size_t size) = 0;

    /// Where the data of applications lie for the current user; made if need be. False if the system doesn't tell.
    virtual bool FindUserFolder(std::u16string& path) = 0;
    /// The system's words for the failure of the operation before.
    virtual std::u16string LastErrorText() = 0;
};

/// The system's own files.
IFileSystem& SystemFiles();

/// What the component works on in this process.
IFileSystem& Files();

/// Puts another one in its place, or the system's again for null, and gives the one before. For tests.
IFileSystem* ReplaceFiles(IFileSystem* replacement);

}  // namespace reka
