#pragma once

#include "SupportingClasses/CString.h"

#include <cstddef>
#include <cstdint>
#include <string>

#include <sys/types.h>

class IOTestParameters;

/// Names of scratch files: folder + "IOT" + number + ".tio", as colon paths.
namespace ScratchFileNames {

/// What a name adds to the folder under test, at the most: ":IOT12999.tio".
inline constexpr std::size_t kNameRoom = 13;

/// How an access method finds out whether a name (native) is taken.
using IsTaken = bool (*)(const std::string& nativePath);

/// The folder of a test's scratch files, ending in ':': the test path, or, when that names an existing file, its
/// folder.
[[nodiscard]] CString Folder(const IOTestParameters& parameters);

/// Takes the first free name of 13000 numbers from `nextNumber` on, which moves behind the number taken. The file is
/// made at once, empty, so that two tests in one folder never get the same name; where it cannot be made (an unusable
/// path) the name counts as free all the same, and opening it will tell why. False when every name is taken.
[[nodiscard]] bool TakeFree(const CString& folder, IsTaken isTaken, mode_t permissions, std::int32_t& nextNumber,
                            CString& name);

}  // namespace ScratchFileNames
