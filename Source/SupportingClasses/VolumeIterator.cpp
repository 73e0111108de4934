#include "SupportingClasses/VolumeIterator.h"

#include <limits>

namespace {

/// Reference numbers are 16 bits wide and negative.
constexpr std::uint32_t kHighestIndex = std::numeric_limits<std::int16_t>::max();

/// A 16-bit number for the name of a file-system type: FNV-1a, its two halves folded together. The same on every
/// machine, and without asking the volume, which may hang.
std::uint16_t FileSystemIDOf(std::string_view fileSystemType) {
    std::uint32_t hash = 2'166'136'261U;
    for (const char c : fileSystemType) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 16'777'619U;
    }
    return static_cast<std::uint16_t>((hash >> 16) ^ (hash & 0xFFFF));
}

}  // namespace

VolumeIterator& VolumeIterator::operator++() {
    if (m_request.result == 0) {
        ++m_request.volumeIndex;
        IssueRequest();
    }
    return *this;
}

VolumeIterator VolumeIterator::operator++(int) {
    VolumeIterator before(*this);
    ++*this;
    return before;
}

const unsigned char* VolumeIterator::VolumeName() {
    m_volumeName = m_request.volumeName;
    return m_volumeName.ConstTextPtr();
}

void VolumeIterator::IssueRequest() {
    if (m_volumes == nullptr) {
        m_volumes = std::make_shared<const VolumeTable>(VolumeTable::Mounted());
    }
    const std::uint32_t index = m_request.volumeIndex;
    if (index > m_volumes->Volumes().size() || index > kHighestIndex) {
        m_request.result = kNoSuchVolume;
        m_request.volumeRefNum = 0;
        m_request.fileSystemID = 0;
        m_request.volumeName.clear();
        return;
    }
    const Volume& volume = m_volumes->Volumes()[index - 1];
    m_request.volumeRefNum = static_cast<std::int16_t>(-static_cast<std::int32_t>(index));
    m_request.fileSystemID = FileSystemIDOf(volume.fileSystemType);
    m_request.volumeName = volume.name;
}
