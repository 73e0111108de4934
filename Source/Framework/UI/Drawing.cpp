#include "Framework/UI/Drawing.h"

#include "Framework/UI/DrawingFonts.h"
#include "Framework/UI/DrawingPort.h"
#include "Framework/UI/GWorld.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace Drawing {

namespace {

std::int16_t ToCoordinate(int value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<int>(value, Limits::min(), Limits::max()));
}

/// The nearest grid line.
int ToGrid(double coordinate) {
    return static_cast<int>(std::lround(coordinate));
}

std::unique_ptr<QPainter> PainterOn(GWorld& image) {
    auto painter = std::make_unique<QPainter>(&image.Image());
    painter->translate(-image.Bounds().left, -image.Bounds().top);
    return painter;
}

}  // namespace

void RGBForeColor(const RGBColor& color) {
    if (Port* port = Port::Current()) {
        port->state.foreColor = color;
    }
}

void RGBBackColor(const RGBColor& color) {
    if (Port* port = Port::Current()) {
        port->state.backColor = color;
    }
}

RGBColor GetForeColor() {
    const Port* port = Port::Current();
    return port != nullptr ? port->state.foreColor : PortState().foreColor;
}

RGBColor GetBackColor() {
    const Port* port = Port::Current();
    return port != nullptr ? port->state.backColor : PortState().backColor;
}

void PenSize(int width, int height) {
    if (Port* port = Port::Current()) {
        port->state.penWidth = width;
        port->state.penHeight = height;
    }
}

void PenNormal() {
    PenSize(1, 1);
}

void MoveTo(int h, int v) {
    Port* port = Port::Current();
    if (port == nullptr) {
        return;
    }
    if (port->isRecording) {
        port->polygon.push_back({.x = h, .y = v});
    }
    port->state.penH = h;
    port->state.penV = v;
}

void LineTo(int h, int v) {
    Port* port = Port::Current();
    if (port == nullptr) {
        return;
    }
    if (!port->isRecording) {
        port->DrawLine(ToGrid(port->state.penH), port->state.penV, h, v);
    }
    MoveTo(h, v);
}

Rect SetRect(int left, int top, int right, int bottom) {
    return {.top = ToCoordinate(top),
            .left = ToCoordinate(left),
            .bottom = ToCoordinate(bottom),
            .right = ToCoordinate(right)};
}

void PaintRect(const Rect& rect) {
    if (Port* port = Port::Current()) {
        port->PaintRect(rect, port->state.foreColor);
    }
}

void EraseRect(const Rect& rect) {
    if (Port* port = Port::Current()) {
        port->PaintRect(rect, port->state.backColor);
    }
}

void FrameRect(const Rect& rect) {
    FrameRoundRect(rect, 0, 0);
}

void FrameRoundRect(const Rect& rect, int ovalWidth, int ovalHeight) {
    if (Port* port = Port::Current()) {
        port->FrameRoundRect(rect, ovalWidth, ovalHeight);
    }
}

void PaintOval(const Rect& rect) {
    if (Port* port = Port::Current()) {
        port->PaintOval(rect);
    }
}

void PaintOvals(const Rect& rect, std::span<const int> places) {
    if (Port* port = Port::Current()) {
        port->PaintOvals(rect, places);
    }
}

void OpenPoly() {
    if (Port* port = Port::Current()) {
        port->polygon.clear();
        port->isRecording = true;
    }
}

void ClosePoly() {
    if (Port* port = Port::Current()) {
        port->isRecording = false;
    }
}

void PaintPoly() {
    if (Port* port = Port::Current()) {
        port->PaintPolygon(port->polygon);
    }
}

void KillPoly() {
    if (Port* port = Port::Current()) {
        port->polygon.clear();
        port->isRecording = false;
    }
}

void TextFont(int number) {
    if (Port* port = Port::Current()) {
        port->state.fontNumber = number;
    }
}

void TextSize(int pixels) {
    if (Port* port = Port::Current()) {
        port->state.fontPixels = pixels;
    }
}

void DrawString(std::string_view text) {
    if (Port* port = Port::Current()) {
        port->DrawText(text);
    }
}

int StringWidth(std::string_view text) {
    const Port* port = Port::Current();
    return port != nullptr ? StringWidth(text, port->state.fontNumber, port->state.fontPixels) : 0;
}

int StringWidth(std::string_view text, int fontNumber, int pixels) {
    const ReadyFont* ready = FindFont(fontNumber, pixels);
    return ready != nullptr ? static_cast<int>(std::ceil(WidthOf(*ready, text))) : 0;
}

LStr255 NumToString(long number) {
    return LStr255(std::to_string(number));
}

void CopyBits(const GWorld& source) {
    if (Port* port = Port::Current()) {
        port->CopyImage(source);
    }
}

struct StateSaver::State {
    Port* port;
    PortState state;
};

StateSaver::StateSaver() {
    if (Port* port = Port::Current()) {
        m_state = std::make_unique<State>(State{.port = port, .state = port->state});
    }
}

StateSaver::~StateSaver() {
    if (m_state != nullptr) {
        m_state->port->state = m_state->state;
    }
}

PortSetter::PortSetter(QPainter& painter) : m_port(std::make_unique<Port>(painter)), m_previous(Port::Current()) {
    Port::SetCurrent(m_port.get());
}

PortSetter::PortSetter(GWorld& image)
    : m_ownPainter(PainterOn(image)), m_port(std::make_unique<Port>(*m_ownPainter)), m_previous(Port::Current()) {
    Port::SetCurrent(m_port.get());
}

PortSetter::~PortSetter() {
    Port::SetCurrent(m_previous);
}

}  // namespace Drawing

double GWorld::CurrentScale() {
    const Drawing::Port* port = Drawing::Port::Current();
    return port != nullptr ? port->Scale() : 1.0;
}
