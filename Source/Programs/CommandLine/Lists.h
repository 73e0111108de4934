#pragma once

#include <ostream>

/// The standard tests as a table: number, name, mode, transfer size, rate, file size limit. Main thread only.
void ListPresets(std::ostream& out);

/// The mounted volumes as a table, and the default test path. Each volume's free space is asked while its line is
/// written, so that one which does not answer shows which it is. Main thread only.
void ListVolumes(std::ostream& out);
