#include "Framework/UI/LTrackControl.h"

#include "Framework/UI/LStream.h"
#include "Framework/UI/PeerCasts.h"

#include <QAbstractSlider>
#include <QMouseEvent>
#include <QSignalBlocker>

#include <algorithm>

namespace {

/// From the beginning of a track to the last place where its thumb can begin.
std::int64_t Travel(const TrackGeometry::Track& track) {
    return std::max(track.length - track.thumbLength, 1);
}

std::int64_t Range(const TrackGeometry::Track& track) {
    return std::max<std::int64_t>(std::int64_t{track.maximum} - track.minimum, 1);
}

}  // namespace

int TrackGeometry::ThumbBegin(const Track& track, std::int32_t value) {
    const std::int64_t fromMinimum = std::int64_t{value} - track.minimum;
    return static_cast<int>((fromMinimum * Travel(track) + Range(track) / 2) / Range(track));
}

std::int32_t TrackGeometry::ValueOfThumb(const Track& track, int begin) {
    const std::int64_t onTrack = std::clamp<std::int64_t>(begin, 0, Travel(track));
    const std::int64_t fromMinimum = (onTrack * Range(track) + Travel(track) / 2) / Travel(track);
    return static_cast<std::int32_t>(std::min<std::int64_t>(track.minimum + fromMinimum, track.maximum));
}

/// Takes the mouse events of the widget: a press is the pane's click, and what follows moves the thumb that it took
/// hold of.
class ThumbDrag final : public QObject {
public:
    explicit ThumbDrag(LTrackControl& pane) : m_pane(pane) { pane.Peer()->installEventFilter(this); }

    void TakeHold(int where) {
        if (m_isPressed) {
            m_heldAt = where - TrackGeometry::ThumbBegin(m_pane.Track(), m_pane.GetValue());
            PeerOf<QAbstractSlider>(m_pane).setSliderDown(true);
        }
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* mouse = dynamic_cast<QMouseEvent*>(event);
        if (mouse == nullptr) {
            return QObject::eventFilter(watched, event);
        }
        switch (event->type()) {
            case QEvent::MouseButtonPress:
            case QEvent::MouseButtonDblClick:
                Press(*mouse);
                break;
            case QEvent::MouseMove:
                Move(*mouse);
                break;
            default:
                Release(*mouse);
                break;
        }
        return true;
    }

private:
    void Press(const QMouseEvent& event) {
        if (event.button() == Qt::LeftButton) {
            m_isPressed = true;
            const QPoint where = event.position().toPoint();
            m_pane.ClickSelf(
                {.whereLocal = {.v = static_cast<std::int16_t>(where.y()), .h = static_cast<std::int16_t>(where.x())}});
        }
    }

    void Move(const QMouseEvent& event) {
        if (PeerOf<QAbstractSlider>(m_pane).isSliderDown()) {
            const int begin = event.position().toPoint().x() - m_heldAt;
            PeerOf<QAbstractSlider>(m_pane).setSliderPosition(TrackGeometry::ValueOfThumb(m_pane.Track(), begin));
        }
    }

    void Release(const QMouseEvent& event) {
        if (event.button() == Qt::LeftButton) {
            m_isPressed = false;
            PeerOf<QAbstractSlider>(m_pane).setSliderDown(false);
        }
    }

    LTrackControl& m_pane;
    bool m_isPressed = false;
    int m_heldAt = 0;  ///< from the thumb's beginning
};

LTrackControl::LTrackControl(LStream* stream) : LControl(stream), m_pageStep(stream->Number("pageStep")) {}

LTrackControl::~LTrackControl() = default;

void LTrackControl::SetPageStep(std::int32_t step) {
    m_pageStep = step;
    if (Peer() != nullptr) {
        PushState();
    }
}

std::int32_t LTrackControl::PageStep() const {
    const std::int64_t range = std::int64_t{GetMaxValue()} - GetMinValue();
    return m_pageStep > 0 ? m_pageStep : static_cast<std::int32_t>(std::max<std::int64_t>(range / 10, 1));
}

TrackGeometry::Track LTrackControl::Track() const {
    return {.length = CalcLocalFrameRect().Width(),
            .thumbLength = ThumbLength(),
            .minimum = GetMinValue(),
            .maximum = GetMaxValue()};
}

void LTrackControl::ClickSelf(const SMouseDownEvent& event) {
    if (Peer() != nullptr && GetMaxValue() > GetMinValue()) {
        m_drag->TakeHold(event.whereLocal.h);
    }
}

void LTrackControl::UpdatePeer() {
    m_drag = std::make_unique<ThumbDrag>(*this);
    Peer()->setFocusPolicy(Qt::StrongFocus);
    QObject::connect(PeerIfAny<QAbstractSlider>(*this), &QAbstractSlider::valueChanged, m_drag.get(),
                     [this](int value) { PeerChangedValue(value); });
    LControl::UpdatePeer();
}

void LTrackControl::PushState() {
    auto& slider = PeerOf<QAbstractSlider>(*this);
    const QSignalBlocker quiet(slider);  // the range may move the value on its way
    slider.setRange(GetMinValue(), GetMaxValue());
    slider.setPageStep(PageStep());
    slider.setValue(GetValue());
}
