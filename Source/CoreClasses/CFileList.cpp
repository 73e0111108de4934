#include "CoreClasses/CFileList.h"

#include "Platform/CStream.h"
#include "Platform/ColonPath.h"

#include <array>
#include <cstdio>

CFileList::~CFileList() {
    for (int index = 0; index < m_files.GetSize(); ++index) {
        const std::unique_ptr<CString> owned(static_cast<CString*>(m_files.GetAt(index)));
    }
}

bool CFileList::Init() {
    m_region = std::make_unique<CriticalRegion>();
    return true;
}

std::unique_lock<CriticalRegion> CFileList::Enter() const {
    return m_region != nullptr ? std::unique_lock(*m_region) : std::unique_lock<CriticalRegion>();
}

CString CFileList::NameAt(int index) const {
    const auto* name = static_cast<const CString*>(m_files.GetAt(index));
    return name != nullptr ? *name : CString();
}

bool CFileList::IsEmpty() const {
    const auto lock = Enter();
    return m_files.GetSize() == 0;
}

void CFileList::AddFile(const char* name) {
    auto owned = std::make_unique<CString>(name);
    const auto lock = Enter();
    m_files.SetAtGrow(m_files.GetSize(), owned.get());
    static_cast<void>(owned.release());  // the list's now
}

bool CFileList::AddFilesFromFileList(const char* path) {
    const auto nativePath = ColonPath::ToNative(path);
    CStream file;
    if (!nativePath || !file.Open(*nativePath, "rt", CStream::Buffering::Full)) {
        std::fputs("Could not open file list.\r\r", stderr);
        return false;
    }
    std::array<char, 401> token{};
    while (std::fscanf(file.Get(), "%400s", token.data()) == 1) {
        CString name(token.data());
        name.TrimLeft();
        name.TrimRight();
        if (!name.IsEmpty()) {
            AddFile(name.CStr());
        }
    }
    return true;
}

void CFileList::GetNextFileThreadSafe(CString& out) {
    const auto lock = Enter();
    if (m_files.GetSize() == 0) {
        out.Empty();
        return;
    }
    if (m_nextIndex >= m_files.GetSize()) {
        m_nextIndex = 0;
    }
    out = NameAt(m_nextIndex);
    ++m_nextIndex;
}

bool CFileList::RemoveFileThreadSafe(CString& out) {
    const auto lock = Enter();
    const int last = m_files.GetSize() - 1;
    if (last < 0) {
        return false;
    }
    out = NameAt(last);
    const std::unique_ptr<CString> removed(static_cast<CString*>(m_files.GetAt(last)));
    m_files.RemoveAt(last);
    return true;
}

std::vector<CString> CFileList::Names() const {
    const auto lock = Enter();
    std::vector<CString> names;
    names.reserve(static_cast<std::size_t>(m_files.GetSize()));
    for (int index = 0; index < m_files.GetSize(); ++index) {
        names.push_back(NameAt(index));
    }
    return names;
}
