#include "Programs/CommandLine/Lists.h"

#include "CoreClasses/IOTestParameterCollectionMgr.h"
#include "Platform/ColonPath.h"
#include "Platform/FileSystem.h"
#include "Platform/Volumes.h"
#include "Programs/CommandLine/TestPlan.h"
#include "Programs/CommandLine/TextFormat.h"

#include <algorithm>
#include <optional>
#include <string>

namespace {

std::string RateText(std::uint32_t rateKBps) {
    return rateKBps == kUnlimitedRate ? "unlimited" : std::to_string(rateKBps);
}

}  // namespace

void ListPresets(std::ostream& out) {
    out << TextFormat::Print("%2s  %-40s %-7s %11s %10s %9s\n", "ID", "Name", "Mode", "Transfer KB", "Rate KB/s",
                             "Limit MB");
    IOTestParameters preset;
    for (int id = 0; IOTestParameterCollectionMgr::GetSingleton()->GetCopyOfStandardParametersByID(id, preset); ++id) {
        out << TextFormat::Print("%2d  %-40s %-7s %11u %10s %9u\n", id, preset.m_testName.CStr(),
                                 ModeName(preset.m_readWriteMethod), preset.m_transferSizeKB,
                                 RateText(preset.m_transferRateKBps).c_str(), preset.m_maxFileSizeMB);
    }
}

void ListVolumes(std::ostream& out) {
    const VolumeTable table = VolumeTable::Mounted();
    int nameWidth = 6;
    for (const Volume& volume : table.Volumes()) {
        nameWidth = std::max(nameWidth, static_cast<int>(volume.name.size()) + 1);
    }
    out << TextFormat::Print("%-*s  %12s  %-10s  %s\n", nameWidth, "Volume", "Free MB", "Type", "Mounted at");
    for (const Volume& volume : table.Volumes()) {
        out << TextFormat::Print("%-*s  ", nameWidth, (volume.name + ":").c_str()) << std::flush;
        const std::optional<std::uint64_t> space = FileSystem::FreeBytes(volume.mountPoint);
        out << TextFormat::Print("%12s  %-10s  %s\n", space ? TextFormat::Megabytes(*space).c_str() : "unknown",
                                 volume.fileSystemType.c_str(), volume.mountPoint.c_str());
    }
    const std::string path(IOTestParameters().m_drivePath.View());
    out << "\nDefault test path: " << BothForms(path, ColonPath::ToNative(path)) << '\n';
}
