#pragma once

#include <memory>
#include <string>

class LPane;
class LStream;

/// The table of pane classes: four-character class ids and what makes a pane of that class from a layout record.
namespace PaneClasses {

using Creator = std::unique_ptr<LPane> (*)(LStream* stream);

/// A later registration of the same id takes the place of an earlier one.
void Register(const std::string& classID, Creator creator);

/// A new pane of the record's class. Throws `LResourceException` for a class that is not registered.
[[nodiscard]] std::unique_ptr<LPane> Create(LStream& stream);

/// The same with everything inside it, not yet finished.
[[nodiscard]] std::unique_ptr<LPane> CreateWithSubPanes(LStream& stream);

/// Registers the classes of the framework itself.
void RegisterFrameworkClasses();

}  // namespace PaneClasses

/// Registers a class that is constructed from a layout record.
template <typename T>
class TRegistrar {
public:
    static void Register(const std::string& classID) { PaneClasses::Register(classID, CreateFromStream); }

    [[nodiscard]] static std::unique_ptr<LPane> CreateFromStream(LStream* stream) {
        return std::make_unique<T>(stream);
    }
};
