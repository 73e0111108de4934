#pragma once

#include <cstdint>

using CommandT = std::int32_t;

/// The commands of the framework; a program adds numbers of its own.
enum FrameworkCommand : CommandT { kCommandAbout = 1, kCommandNew = 2, kCommandClose = 4, kCommandQuit = 10 };

/// A link of the chain that commands travel up: from the commander in use through its super-commanders to the
/// application. Main thread only.
class LCommander {
public:
    /// `super` outlives this commander; null for the top of the chain.
    explicit LCommander(LCommander* super = nullptr) : m_super(super) {}
    virtual ~LCommander() = default;
    LCommander(const LCommander&) = delete;
    LCommander& operator=(const LCommander&) = delete;

    [[nodiscard]] LCommander* GetSuperCommander() const { return m_super; }
    void SetSuperCommander(LCommander* super) { m_super = super; }

    /// Sends a command up the chain from here. Answers whether anyone handled it. `ioParam` is whatever the command
    /// says.
    bool ProcessCommand(CommandT command, void* ioParam = nullptr) { return ObeyCommand(command, ioParam); }

    /// Carries the command out, or hands it to the super-commander. Answers whether it was handled.
    virtual bool ObeyCommand(CommandT command, void* ioParam) {
        return m_super != nullptr && m_super->ObeyCommand(command, ioParam);
    }

    /// Whether the command can be given now.
    [[nodiscard]] virtual bool FindCommandStatus(CommandT command) {
        return m_super != nullptr && m_super->FindCommandStatus(command);
    }

private:
    LCommander* m_super;
};
