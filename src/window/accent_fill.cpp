#include "window/accent_fill.h"

#include <QLinearGradient>
#include <QPainter>

namespace stowlark {

AccentFill::AccentFill(QQuickItem *parent)
    : QQuickPaintedItem(parent) {
    setAntialiasing(true);
    connect(this, &AccentFill::changed, this, [this] { update(); });
}

void AccentFill::paint(QPainter *painter) {
    QLinearGradient blend(0, 0, width(), isBanner_ ? height() : 0);
    blend.setColorAt(0, from_);
    blend.setColorAt(1, to_);
    const qreal inset = lineWidth_ / 2;
    const qreal radius = radius_ - inset;
    painter->setPen(lineWidth_ > 0 ? QPen(blend, lineWidth_) : QPen(Qt::NoPen));
    painter->setBrush(lineWidth_ > 0 ? QBrush(Qt::NoBrush) : QBrush(blend));
    const qreal below = isBanner_ ? radius_ : -inset; // what is drawn out of the item is cut off
    painter->drawRoundedRect(boundingRect().adjusted(inset, inset, -inset, below), radius, radius);
}

} // namespace stowlark
