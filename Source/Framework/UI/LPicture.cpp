#include "Framework/UI/LPicture.h"

#include "Framework/UI/Drawing.h"
#include "Framework/UI/LStream.h"
#include "Framework/UI/LayoutAttributes.h"
#include "Framework/UI/Look.h"

#include <array>

namespace {

constexpr int kWidth = 20;
constexpr int kHeight = 16;

/// A long bar, and a frame around a part of it.
void DrawWindowPart(int left, int top) {
    Drawing::RGBForeColor(Look::ColorOf(Look::Role::QuietText));
    Drawing::PaintRect(Drawing::SetRect(left, top + 6, left + kWidth, top + 10));
    Drawing::RGBForeColor(Look::ColorOf(Look::Role::Window));
    Drawing::PaintRect(Drawing::SetRect(left + 4, top + 2, left + 16, top + 14));
    Drawing::RGBForeColor(Look::ColorOf(Look::Role::Signal));
    Drawing::PaintRect(Drawing::SetRect(left + 8, top + 6, left + 12, top + 10));
    Drawing::PenSize(2, 2);
    Drawing::FrameRect(Drawing::SetRect(left + 5, top + 2, left + 15, top + 14));
    Drawing::PenNormal();
}

/// An arrow that runs against the end.
void DrawFollowNewest(int left, int top) {
    Drawing::RGBForeColor(Look::ColorOf(Look::Role::Signal));
    Drawing::OpenPoly();
    Drawing::MoveTo(left + 4, top + 2);
    Drawing::LineTo(left + 12, top + 8);
    Drawing::LineTo(left + 4, top + 14);
    Drawing::LineTo(left + 4, top + 2);
    Drawing::ClosePoly();
    Drawing::PaintPoly();
    Drawing::KillPoly();
    Drawing::PaintRect(Drawing::SetRect(left + 13, top + 2, left + 16, top + 14));
}

}  // namespace

LPicture::LPicture(LStream* stream) : LPane(stream) {
    static constexpr std::array<LayoutAttributes::Word<Picture>, 2> kPictures{
        {{"window-part", Picture::WindowPart}, {"follow-newest", Picture::FollowNewest}}};
    if (!stream->Has("picture")) {
        throw LayoutAttributes::Unreadable(*stream, "picture");
    }
    m_picture = LayoutAttributes::OneOf<Picture>(*stream, "picture", kPictures, Picture::WindowPart);
    if (GetAccessibleName().empty()) {
        SetAccessibleName(m_picture == Picture::WindowPart ? "A part of the history is shown"
                                                           : "The view follows the newest samples");
    }
}

void LPicture::DrawSelf() {
    const Rect frame = CalcLocalFrameRect();
    const int left = (frame.Width() - kWidth) / 2;
    const int top = (frame.Height() - kHeight) / 2;
    switch (m_picture) {
        case Picture::WindowPart:
            DrawWindowPart(left, top);
            break;
        case Picture::FollowNewest:
            DrawFollowNewest(left, top);
            break;
    }
}
