#pragma once

#include "Platform/CriticalRegion.h"
#include "SupportingClasses/CPtrArray.h"
#include "SupportingClasses/CString.h"

#include <memory>
#include <mutex>
#include <vector>

/// The names (colon paths) of the files that a test works on, handed out in rotation. Duplicates are allowed.
class CFileList {
public:
    CFileList() = default;
    virtual ~CFileList();
    CFileList(const CFileList&) = delete;
    CFileList& operator=(const CFileList&) = delete;

    /// Makes the critical region; before it the list belongs to one thread. Always true.
    bool Init();

    [[nodiscard]] bool IsEmpty() const;
    void AddFile(const char* name);

    /// Adds the whitespace-separated names of a text file (colon path). Names of more than 400 characters come apart.
    /// False, with a line on the standard error stream, when the file cannot be opened.
    bool AddFilesFromFileList(const char* path);

    /// The next name in rotation, the empty text when there is none. After the last name, and when names were removed
    /// meanwhile, the rotation begins again with the first.
    void GetNextFileThreadSafe(CString& out);

    /// Takes the last name out of the list. False when there was none; `out` is unchanged then.
    bool RemoveFileThreadSafe(CString& out);

    /// A copy of all names, in order. From any thread.
    [[nodiscard]] std::vector<CString> Names() const;

private:
    [[nodiscard]] std::unique_lock<CriticalRegion> Enter() const;
    [[nodiscard]] CString NameAt(int index) const;

    std::unique_ptr<CriticalRegion> m_region;  ///< guards the members below once it is there
    CPtrArray m_files;                         ///< of owned `CString*`
    std::int32_t m_nextIndex = 0;
};
