#include "CoreClasses/IOTestParameterCollectionMgr.h"

#include "CoreClasses/IOTestParameters.h"

#include <array>
#include <memory>

namespace {

struct PresetRow {
    const char* name;
    ReadWriteMethod readWriteMethod;
    std::uint32_t transferSizeKB;
    std::uint32_t transferRateKBps;
    std::uint32_t maxFileSizeMB;
};

// A rate of a fractional number of MB/s is that number times 1024, truncated: 3.8 MB/s is 3891 KB/s.
constexpr auto kPresets = std::to_array<PresetRow>({
    {"Profile-A Reads (~ 4 MB/second)", kReadsOnly, 1024, 4096, 100},
    {"Profile-A Writes (~ 4 MB/second)", kWritesOnly, 1024, 4096, 100},
    {"Profile-B Reads (~ 8 MB/second)", kReadsOnly, 1024, 8192, 100},
    {"Profile-B Writes (~ 8 MB/second)", kWritesOnly, 1024, 8192, 100},
    {"Profile-C Reads (~ 18 MB/second)", kReadsOnly, 8192, 18432, 200},
    {"Profile-C Writes (~ 18 MB/second)", kWritesOnly, 8192, 18432, 200},
    {"Profile-D Reads (~ 27 MB/second)", kReadsOnly, 8192, 27648, 200},
    {"Profile-D Writes (~ 27 MB/second)", kWritesOnly, 8192, 27648, 200},
    {"Profile-E Writes (~ 3.8 MB/sec)", kWritesOnly, 1024, 3891, 100},
    {"Profile-F Writes (~ 5.5 MB/sec)", kWritesOnly, 1024, 5632, 100},
    {"Profile-G Writes (~ 3.3 MB/sec)", kWritesOnly, 1024, 3379, 100},
    {"Profile-H Reads (~ 5 MB/sec)", kReadsOnly, 1024, 5120, 100},
    {"Profile-H Writes (~ 5 MB/sec)", kWritesOnly, 1024, 5120, 100},
    {"Profile-C Dual Reads (~ 36 MB/second)", kReadsOnly, 8192, 36864, 400},
    {"Profile-D Dual Reads (~ 54 MB/second)", kReadsOnly, 8192, 55296, 800},
    {"Unlimited Reads (8192KB)", kReadsOnly, 8192, kUnlimitedRate, 800},
    {"Unlimited Writes (8192KB)", kWritesOnly, 8192, kUnlimitedRate, 800},
});

IOTestParameterCollectionMgr*& TheCollection() {
    static IOTestParameterCollectionMgr* registered = nullptr;
    return registered;
}

/// The collection that `GetSingleton` made; one that somebody else made and registered is not deleted here.
std::unique_ptr<IOTestParameterCollectionMgr>& Owned() {
    static std::unique_ptr<IOTestParameterCollectionMgr> owned;
    return owned;
}

std::unique_ptr<IOTestParameters> MakePreset(int id) {
    const PresetRow& row = kPresets[static_cast<std::size_t>(id)];
    auto preset = std::make_unique<IOTestParameters>();
    preset->m_standardTestID = id;
    preset->m_testName = row.name;
    preset->m_readWriteMethod = row.readWriteMethod;
    preset->m_transferSizeKB = row.transferSizeKB;
    preset->m_transferRateKBps = row.transferRateKBps;
    preset->m_maxFileSizeMB = row.maxFileSizeMB;
    preset->SetPathValue("");
    return preset;
}

}  // namespace

IOTestParameterCollectionMgr::IOTestParameterCollectionMgr() {
    if (TheCollection() == nullptr) {
        TheCollection() = this;
    }
    for (int id = 0; id < static_cast<int>(kPresets.size()); ++id) {
        m_presets.SetAtGrow(m_presets.GetSize(), MakePreset(id).release());
    }
}

IOTestParameterCollectionMgr::~IOTestParameterCollectionMgr() {
    for (int id = 0; id < m_presets.GetSize(); ++id) {
        const std::unique_ptr<IOTestParameters> owned(static_cast<IOTestParameters*>(m_presets.GetAt(id)));
    }
    if (TheCollection() == this) {
        TheCollection() = nullptr;
    }
}

IOTestParameterCollectionMgr* IOTestParameterCollectionMgr::GetSingleton() {
    if (TheCollection() == nullptr) {
        Owned() = std::make_unique<IOTestParameterCollectionMgr>();  // registers itself
    }
    return TheCollection();
}

void IOTestParameterCollectionMgr::DestroySingleton() {
    Owned().reset();
}

bool IOTestParameterCollectionMgr::GetCopyOfStandardParametersByID(int id, IOTestParameters& out) const {
    const auto* preset = static_cast<const IOTestParameters*>(m_presets.GetAt(id));
    if (preset == nullptr) {
        return false;
    }
    preset->GetStandardParameters(out);
    return true;
}
