#pragma once

#include "Framework/Base/LStr255.h"
#include "Platform/DrawingTypes.h"

#include <cstdint>
#include <memory>
#include <string>

class GWorld;
class LStream;
class LView;
class LWindow;
class QWidget;

using PaneIDT = std::int32_t;

/// Which sides of its superview a pane follows when that changes size. A pane bound to two opposite sides stretches.
struct SBindings {
    bool left = true;
    bool top = true;
    bool right = false;
    bool bottom = false;
};

/// What every pane begins with.
struct SPaneInfo {
    PaneIDT paneID = 0;
    std::int16_t left = 0;  ///< in the superview
    std::int16_t top = 0;
    std::int16_t width = 0;
    std::int16_t height = 0;
    bool visible = true;
    bool enabled = true;
    SBindings bindings{};
    std::int32_t userCon = 0;  ///< for the owner's use
    std::string accessibleName{};
    std::string toolTip{};
};

/// A click on a pane.
struct SMouseDownEvent {
    Point whereLocal{};  ///< in the pane's local coordinates
};

/// An area of a window. Each pane of a window that is built has a widget as its peer; a pane alone has none, keeps its
/// state all the same, and can be drawn into an off-screen image (`DrawInto`). Main thread only.
///
/// Life: constructed from a layout record, put inside its superview, which owns it from then on, then `FinishCreate`
/// once the whole window stands.
class LPane {
public:
    explicit LPane(SPaneInfo info);
    explicit LPane(LStream* stream);
    virtual ~LPane();
    LPane(const LPane&) = delete;
    LPane& operator=(const LPane&) = delete;

    [[nodiscard]] PaneIDT GetPaneID() const { return m_info.paneID; }
    [[nodiscard]] std::int32_t GetUserCon() const { return m_info.userCon; }
    [[nodiscard]] LView* GetSuperView() const { return m_superView; }
    [[nodiscard]] LWindow* GetWindow();

    /// This pane or the one inside it that has the id; null when there is none.
    [[nodiscard]] virtual LPane* FindPaneByID(PaneIDT id);

    /// The pane's area with its own top left corner as origin.
    [[nodiscard]] Rect CalcLocalFrameRect() const;
    [[nodiscard]] Rect FrameInSuperView() const;
    void ResizeFrameTo(std::int16_t width, std::int16_t height);
    void PlaceInSuperFrameAt(std::int16_t left, std::int16_t top);

    virtual void Show();
    virtual void Hide();
    virtual void Enable();
    virtual void Disable();
    [[nodiscard]] bool IsVisible() const { return m_info.visible; }
    [[nodiscard]] bool IsEnabled() const { return m_info.enabled; }

    /// The pane's text and value, for panes that have them.
    virtual void SetDescriptor(const LStr255& text);
    [[nodiscard]] virtual LStr255 GetDescriptor() const;
    virtual void SetValue(std::int32_t value);
    [[nodiscard]] virtual std::int32_t GetValue() const;

    /// What a screen reader says of the pane: its caption, and the value of a pane that draws one itself.
    void SetAccessibleName(const std::string& name);
    [[nodiscard]] const std::string& GetAccessibleName() const { return m_info.accessibleName; }
    [[nodiscard]] virtual std::string AccessibleValue() const { return {}; }
    void SetToolTip(const std::string& text);

    /// Gives the pane the keyboard, if its window has it.
    void TakeFocus() const;

    /// Has Tab go to `next` right after this pane; both have peers in one window.
    void TabTo(const LPane& next) const;

    /// Draws now; `Refresh` when the event loop comes to it. Both do nothing for a pane that no window shows.
    void Draw() const;
    void Refresh() const;

    /// Draws the pane, without what is inside it, into `image`, whose coordinates become the pane's. Needs no window.
    void DrawInto(GWorld& image);

    /// Completes a pane whose window stands: `FinishCreateSelf` of it and of everything inside it, insides first.
    virtual void FinishCreate();

    /// Draws the pane in its local coordinates; the port is set. Called by the framework.
    virtual void DrawSelf() {}

    /// Acts on a click; called by the framework on enabled, visible panes.
    virtual void ClickSelf(const SMouseDownEvent& event);

    /// The widget that stands for this pane; null before the window is built and for a pane alone. Stays the pane's.
    [[nodiscard]] QWidget* Peer() const;

    /// Makes the peers of this pane and of everything inside it, as children of `parent`. Called by the framework.
    virtual void BuildPeer(QWidget* parent);

protected:
    /// Completes what the constructor could not: other panes can be found now.
    virtual void FinishCreateSelf() {}

    /// A new widget for this pane; by default one that draws with `DrawSelf` and clicks with `ClickSelf`.
    [[nodiscard]] virtual std::unique_ptr<QWidget> MakePeer(QWidget* parent);

    /// Brings a new peer up to the pane's state; overriders call the inherited one.
    virtual void UpdatePeer();

    /// The pane's frame has changed; the peer has its new size already.
    virtual void FrameChanged() {}

private:
    friend class LView;

    void SetSuperView(LView* superView) { m_superView = superView; }
    void FollowSuperView(int widthChange, int heightChange);
    void ApplyFrame();

    struct PeerHolder;

    SPaneInfo m_info;
    LView* m_superView = nullptr;
    std::unique_ptr<PeerHolder> m_peer;
};
