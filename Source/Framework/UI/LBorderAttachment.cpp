#include "Framework/UI/LBorderAttachment.h"

#include "Framework/UI/Drawing.h"
#include "Framework/UI/Look.h"

#include <QWidget>

void LBorderAttachment::DrawSelf() {
    Drawing::RGBForeColor(Look::ColorOf(Look::Role::Outline));
    Drawing::PenNormal();
    Drawing::FrameRect(CalcLocalFrameRect());
}

void LBorderAttachment::UpdatePeer() {
    LPane::UpdatePeer();
    Peer()->setAttribute(Qt::WA_TransparentForMouseEvents);
}
