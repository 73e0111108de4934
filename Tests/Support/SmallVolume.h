#pragma once

#include "Support/TemporaryFolder.h"

#include <string>

#include <sys/mount.h>

/// A small memory file system, mounted for as long as the object lives; a test that may not mount skips itself.
class SmallVolume {
public:
    /// `size` as the file system's option takes it: "6656k".
    explicit SmallVolume(const std::string& size, unsigned long flags = 0)
        : m_isMounted(::mount("none", m_folder.Native().c_str(), "tmpfs", flags, ("size=" + size).c_str()) == 0) {}
    ~SmallVolume() {
        if (m_isMounted) {
            ::umount2(m_folder.Native().c_str(), MNT_DETACH);
        }
    }
    SmallVolume(const SmallVolume&) = delete;
    SmallVolume& operator=(const SmallVolume&) = delete;

    [[nodiscard]] bool IsMounted() const { return m_isMounted; }
    [[nodiscard]] std::string Native(const std::string& name) const { return m_folder.Native(name); }
    [[nodiscard]] std::string Colon() const { return m_folder.Colon(); }  ///< with a ':' at its end

private:
    TemporaryFolder m_folder;
    bool m_isMounted;
};
