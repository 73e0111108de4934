#pragma once

#include "Framework/Base/LStr255.h"
#include "Platform/Volumes.h"

#include <cstdint>
#include <memory>
#include <string>

/// A request for the volume of one index, and its answer.
struct VolumeRequest {
    static constexpr std::uint32_t kFileSystemInformation = 0x4000;

    std::int16_t result = 0;        ///< 0, or `VolumeIterator::kNoSuchVolume` when no volume has the index
    std::int16_t volumeRefNum = 0;  ///< -1 for the first volume, -2 for the second; 0 names no volume
    std::uint32_t volumeIndex = 0;  ///< from 1; 0 before the first request
    std::uint32_t whichInformation = kFileSystemInformation;
    std::uint16_t fileSystemID = 0;  ///< equal for volumes of the same kind of file system
    std::string volumeName;          ///< in the bytes of the file system
};

/// Walks the mounted volumes, the root file system first and the others in mount order. A fresh iterator stands before
/// the first volume and is the end marker as well:
///
///     const VolumeIterator end;
///     for (VolumeIterator volume = ++VolumeIterator(); volume != end; ++volume) { ... }
///
/// The first advance notes which volumes are mounted; the walk and the copies made during it keep to that. A value, for
/// one thread.
class VolumeIterator {
public:
    static constexpr std::int16_t kNoSuchVolume = -35;

    VolumeIterator() = default;

    /// Goes on to the next volume; behind the last one the iterator becomes equal to a fresh one and stays there.
    VolumeIterator& operator++();
    VolumeIterator operator++(int);

    [[nodiscard]] bool operator==(const VolumeIterator& other) const { return VolumeRefNum() == other.VolumeRefNum(); }

    [[nodiscard]] const VolumeRequest& operator*() const { return m_request; }
    [[nodiscard]] const VolumeRequest* operator->() const { return &m_request; }

    [[nodiscard]] std::int16_t VolumeRefNum() const { return m_request.volumeRefNum; }
    [[nodiscard]] std::uint16_t VolumeIndex() const { return static_cast<std::uint16_t>(m_request.volumeIndex); }
    [[nodiscard]] std::uint16_t FileSystemID() const { return m_request.fileSystemID; }

    /// The volume's name, length byte first, at most 255 bytes; empty when the iterator stands on no volume. Good until
    /// the iterator's next call of this function.
    [[nodiscard]] const unsigned char* VolumeName();

private:
    void IssueRequest();

    LStr255 m_volumeName;
    VolumeRequest m_request;
    std::shared_ptr<const VolumeTable> m_volumes;  ///< null before the first advance
};
