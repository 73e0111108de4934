#include "Framework/UI/LScrollBar.h"

#include "Framework/UI/LStream.h"
#include "Framework/UI/LookStyle.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr int kShortestThumb = 24;
constexpr int kLongestThumb = 60;

/// Painted here, because a style's scroll bar has arrows.
class BarWidget final : public QScrollBar {
public:
    BarWidget(const LScrollBar& pane, QWidget* parent) : QScrollBar(Qt::Horizontal, parent), m_pane(pane) {
        setContextMenuPolicy(Qt::PreventContextMenu);  // its menu would run an event loop of its own
        setAttribute(Qt::WA_Hover);
        setAttribute(Qt::WA_OpaquePaintEvent, false);
    }

protected:
    /// The library's bar takes the arrow keys of a horizontal bar the wrong way round.
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Left) {
            triggerAction(SliderSingleStepSub);
        } else if (event->key() == Qt::Key_Right) {
            triggerAction(SliderSingleStepAdd);
        } else {
            QScrollBar::keyPressEvent(event);
        }
    }

    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const bool canMove = isEnabled() && maximum() > minimum();
        const int begin = TrackGeometry::ThumbBegin(m_pane.Track(), sliderPosition());
        const QRect thumb(begin, 0, m_pane.ThumbLength(), height());
        LookStyle::PaintScrollBar(painter, *this, canMove ? thumb : QRect());
    }

private:
    const LScrollBar& m_pane;
};

}  // namespace

LScrollBar::LScrollBar(LStream* stream) : LTrackControl(stream), m_arrowLayout(stream->Number("arrowLayout", 1)) {}

int LScrollBar::ThumbLength() const {
    const std::int64_t length = CalcLocalFrameRect().Width();
    const std::int64_t whole = std::max<std::int64_t>(std::int64_t{GetMaxValue()} - GetMinValue() + PageStep(), 1);
    const auto share = static_cast<int>(length * PageStep() / whole);
    return std::min(std::clamp(share, kShortestThumb, kLongestThumb), static_cast<int>(length));
}

std::unique_ptr<QWidget> LScrollBar::MakePeer(QWidget* parent) {
    return std::make_unique<BarWidget>(*this, parent);
}
