#include "Framework/UI/LPane.h"

#include "Framework/Base/LException.h"
#include "Framework/UI/Drawing.h"
#include "Framework/UI/GWorld.h"
#include "Framework/UI/LStream.h"
#include "Framework/UI/LView.h"
#include "Framework/UI/LWindow.h"
#include "Framework/UI/PaneWidget.h"

#include <QPointer>
#include <QWidget>

#include <limits>
#include <utility>

namespace {

std::int16_t Coordinate(const LStream& stream, const std::string& attribute) {
    const std::int32_t number = stream.Number(attribute);
    if (number < std::numeric_limits<std::int16_t>::min() || number > std::numeric_limits<std::int16_t>::max()) {
        throw LResourceException(stream.Description() + ": the attribute " + attribute + " is out of range");
    }
    return static_cast<std::int16_t>(number);
}

/// "bind" names the sides, e.g. "left right top".
SBindings BindingsFrom(const LStream& stream) {
    const std::string sides = stream.Text("bind", "left top");
    const auto has = [&](const char* side) { return sides.find(side) != std::string::npos; };
    return {.left = has("left"), .top = has("top"), .right = has("right"), .bottom = has("bottom")};
}

SPaneInfo PaneInfoFrom(const LStream& stream) {
    return {.paneID = stream.Number("id"),
            .left = Coordinate(stream, "left"),
            .top = Coordinate(stream, "top"),
            .width = Coordinate(stream, "width"),
            .height = Coordinate(stream, "height"),
            .visible = stream.Flag("visible", true),
            .enabled = stream.Flag("enabled", true),
            .bindings = BindingsFrom(stream),
            .userCon = stream.Number("userCon"),
            .accessibleName = stream.Text("accessibleName"),
            .toolTip = stream.Text("toolTip")};
}

}  // namespace

/// Deletes the widget with the pane, unless the window's widgets have gone before.
struct LPane::PeerHolder {
    explicit PeerHolder(std::unique_ptr<QWidget> made) : widget(made.release()) {}
    ~PeerHolder() { delete widget.data(); }
    PeerHolder(const PeerHolder&) = delete;
    PeerHolder& operator=(const PeerHolder&) = delete;

    QPointer<QWidget> widget;
};

LPane::LPane(SPaneInfo info) : m_info(std::move(info)) {}

LPane::LPane(LStream* stream) : m_info(PaneInfoFrom(*stream)) {}

LPane::~LPane() = default;

QWidget* LPane::Peer() const {
    return m_peer != nullptr ? m_peer->widget.data() : nullptr;
}

LWindow* LPane::GetWindow() {
    LPane* top = this;
    while (top->m_superView != nullptr) {
        top = top->m_superView;
    }
    return dynamic_cast<LWindow*>(top);
}

LPane* LPane::FindPaneByID(PaneIDT id) {
    return m_info.paneID == id ? this : nullptr;
}

Rect LPane::CalcLocalFrameRect() const {
    return {.top = 0, .left = 0, .bottom = m_info.height, .right = m_info.width};
}

Rect LPane::FrameInSuperView() const {
    return {.top = m_info.top,
            .left = m_info.left,
            .bottom = static_cast<std::int16_t>(m_info.top + m_info.height),
            .right = static_cast<std::int16_t>(m_info.left + m_info.width)};
}

void LPane::ResizeFrameTo(std::int16_t width, std::int16_t height) {
    m_info.width = width;
    m_info.height = height;
    ApplyFrame();
}

void LPane::PlaceInSuperFrameAt(std::int16_t left, std::int16_t top) {
    m_info.left = left;
    m_info.top = top;
    ApplyFrame();
}

void LPane::FollowSuperView(int widthChange, int heightChange) {
    const auto follow = [](bool near, bool far, std::int16_t& place, std::int16_t& extent, int change) {
        if (far) {
            std::int16_t& moved = near ? extent : place;
            moved = static_cast<std::int16_t>(moved + change);
        }
    };
    follow(m_info.bindings.left, m_info.bindings.right, m_info.left, m_info.width, widthChange);
    follow(m_info.bindings.top, m_info.bindings.bottom, m_info.top, m_info.height, heightChange);
    ApplyFrame();
}

void LPane::ApplyFrame() {
    if (QWidget* peer = Peer(); peer != nullptr && !peer->isWindow()) {
        peer->setGeometry(m_info.left, m_info.top, m_info.width, m_info.height);
    }
    FrameChanged();
}

void LPane::Show() {
    m_info.visible = true;
    if (QWidget* peer = Peer()) {
        peer->show();
    }
}

void LPane::Hide() {
    m_info.visible = false;
    if (QWidget* peer = Peer()) {
        peer->hide();
    }
}

void LPane::Enable() {
    m_info.enabled = true;
    if (QWidget* peer = Peer()) {
        peer->setEnabled(true);
    }
}

void LPane::Disable() {
    m_info.enabled = false;
    if (QWidget* peer = Peer()) {
        peer->setEnabled(false);
    }
}

void LPane::SetDescriptor(const LStr255& /*text*/) {}

LStr255 LPane::GetDescriptor() const {
    return {};
}

void LPane::SetValue(std::int32_t /*value*/) {}

std::int32_t LPane::GetValue() const {
    return 0;
}

void LPane::SetAccessibleName(const std::string& name) {
    m_info.accessibleName = name;
    if (QWidget* peer = Peer()) {
        peer->setAccessibleName(QString::fromStdString(name));
    }
}

void LPane::SetToolTip(const std::string& text) {
    m_info.toolTip = text;
    if (QWidget* peer = Peer()) {
        peer->setToolTip(QString::fromStdString(text));
    }
}

void LPane::TakeFocus() const {
    if (QWidget* peer = Peer()) {
        peer->setFocus(Qt::OtherFocusReason);
    }
}

void LPane::TabTo(const LPane& next) const {
    if (Peer() != nullptr && next.Peer() != nullptr) {
        QWidget::setTabOrder(Peer(), next.Peer());
    }
}

void LPane::Draw() const {
    if (QWidget* peer = Peer(); peer != nullptr && peer->isVisible()) {
        peer->repaint();
    }
}

void LPane::Refresh() const {
    if (QWidget* peer = Peer()) {
        peer->update();
    }
}

void LPane::DrawInto(GWorld& image) {
    const auto port = image.BeginPainting();
    DrawSelf();
}

void LPane::FinishCreate() {
    FinishCreateSelf();
}

void LPane::ClickSelf(const SMouseDownEvent& /*event*/) {}

std::unique_ptr<QWidget> LPane::MakePeer(QWidget* parent) {
    return std::make_unique<PaneWidget>(*this, parent);
}

void LPane::BuildPeer(QWidget* parent) {
    m_peer = std::make_unique<PeerHolder>(MakePeer(parent));
    UpdatePeer();
}

void LPane::UpdatePeer() {
    QWidget* peer = Peer();
    peer->setGeometry(m_info.left, m_info.top, m_info.width, m_info.height);
    peer->setEnabled(m_info.enabled);
    peer->setVisible(m_info.visible);
    peer->setObjectName(QString::number(m_info.paneID));
    peer->setAccessibleName(QString::fromStdString(m_info.accessibleName));
    peer->setToolTip(QString::fromStdString(m_info.toolTip));
}
