#pragma once

#include "Framework/Base/LCommander.h"

#include <memory>
#include <vector>

class LWindow;

/// The application: the top of the commander chain, owner of the windows and of the event loop. One for the process;
/// the system's application object exists before it. Main thread only.
class LApplication : public LCommander {
public:
    /// What to do about unsaved work when quitting; this program has none and always asks.
    enum class SaveOption { Ask };

    LApplication();
    /// Disposes of the windows that are left.
    ~LApplication() override;

    /// The application. Throws `LNilPointerException` when there is none.
    [[nodiscard]] static LApplication& Instance();

    /// `Initialize`, `StartUp`, then the event loop until `Quit`. SIGINT, SIGTERM, SIGHUP and the end of the desktop
    /// session become a quit command. Answers the process's exit status.
    int Run();

    /// Whether the event loop has been asked to end.
    [[nodiscard]] bool IsQuitting() const { return m_isQuitting; }

    /// What a quit request does: `Quit` unless overridden.
    virtual void DoQuit(SaveOption option);

    /// Ends the event loop; final.
    void Quit();

    /// Command 10 is a quit request.
    bool ObeyCommand(CommandT command, void* ioParam) override;
    [[nodiscard]] bool FindCommandStatus(CommandT command) override;

    void Adopt(std::unique_ptr<LWindow> window);
    /// Destroys the window when the handlers that run now have returned. Twice is once.
    void Dispose(LWindow& window);
    /// Whether the application has that window and has not been told to dispose of it; a pointer to one that is gone
    /// will do.
    [[nodiscard]] bool IsOpen(const LWindow* window) const;
    /// Minimises every window that is shown.
    void CollapseAllWindows();
    [[nodiscard]] const std::vector<std::unique_ptr<LWindow>>& Windows() const { return m_windows; }

protected:
    /// Before the first window.
    virtual void Initialize() {}
    /// Opens the first window.
    virtual void StartUp() {}
    /// The display is gone: the server that had it, or the connection to it. The process ends when this returns, so
    /// that what must not be left as it is has to be put in order here, without the windows. Called from within exit().
    virtual void DisplayLost() {}

private:
    class EndRequests;

    int RunEventLoop();
    void DestroyDisposed();

    std::vector<std::unique_ptr<LWindow>> m_windows;
    std::vector<LWindow*> m_disposed;
    bool m_isQuitting = false;
    bool m_isInEventLoop = false;
    /// Until the windows are gone: a second signal must not end the process before the logs are closed.
    std::unique_ptr<EndRequests> m_endRequests;
};
