#pragma once

#include "Framework/Base/LCommander.h"
#include "Framework/UI/LView.h"

#include <memory>
#include <string>

class WindowShell;

/// A window: the outermost view of its panes and a link of the commander chain.
///
/// Attributes of its layout besides a pane's: "title"; "resizable" (it can be made larger than the layout, never
/// smaller); "menuBar" (the id of the menu bar that it shows); "defaultButton" and "cancelButton" (ids of the buttons
/// that Enter and Escape press).
///
/// The application owns every window from `CreateWindow` on and disposes of it some time after `CloseWindow`.
class LWindow : public LView, public LCommander {
public:
    explicit LWindow(LStream* stream);
    ~LWindow() override;

    /// Builds the window of a layout resource, hidden, in the middle of the nearest window up the chain. `super` is its
    /// super-commander. Throws `LResourceException` when the layout is missing, is not written as it should be or names
    /// an unknown class.
    [[nodiscard]] static LWindow* CreateWindow(int layoutID, LCommander* super);

    void Show() override;
    void Hide() override;
    void SetDescriptor(const LStr255& text) override;
    [[nodiscard]] LStr255 GetDescriptor() const override;

    /// Moves the window on the screen by so many units.
    void MoveBy(int horizontally, int vertically);
    /// Changes the size of the window's content; for windows that the user cannot resize.
    void ResizeWindowTo(int width, int height);
    /// Brings the window to the front and gives it the keyboard.
    void Select();

    /// What closing the window through its frame, Escape without a cancel button, or the close command does:
    /// `CloseWindow` unless overridden.
    virtual void DoClose();

    /// Hides the window now and has the application dispose of it when the running handlers have returned.
    void CloseWindow();

    /// Command 4 closes the window; everything else goes up.
    bool ObeyCommand(CommandT command, void* ioParam) override;
    [[nodiscard]] bool FindCommandStatus(CommandT command) override;

    void BuildPeer(QWidget* parent) override;

    /// The top-level widget; null before the window is built. Stays the window's.
    [[nodiscard]] QWidget* Shell() const;

protected:
    [[nodiscard]] std::unique_ptr<QWidget> MakePeer(QWidget* parent) override;

private:
    friend class WindowShell;

    /// Moves the window over the first window from `commander` up the chain; nothing happens when that is not shown.
    void CentreOver(LCommander* commander);

    /// Presses the button with the id if it is there and enabled. Answers whether it was.
    bool PressButton(PaneIDT id);

    std::string m_title;
    bool m_isResizable;
    int m_menuBarID;
    PaneIDT m_defaultButton;
    PaneIDT m_cancelButton;
    std::unique_ptr<WindowShell> m_shell;
};

/// A window of controls.
class LDialogBox : public LWindow {
public:
    using LWindow::LWindow;
};
