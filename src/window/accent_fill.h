#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace stowlark {

/// A rounded rectangle that blends from one colour at the left to another at the right; only its outline if
/// `lineWidth` is not 0. A banner blends from corner to corner and is not rounded below. Painted, as the
/// software renderer does not smooth the corners of a Rectangle with a gradient.
class AccentFill : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor from MEMBER from_ NOTIFY changed)
    Q_PROPERTY(QColor to MEMBER to_ NOTIFY changed)
    Q_PROPERTY(qreal radius MEMBER radius_ NOTIFY changed)
    Q_PROPERTY(qreal lineWidth MEMBER lineWidth_ NOTIFY changed)
    Q_PROPERTY(bool isBanner MEMBER isBanner_ NOTIFY changed)

public:
    explicit AccentFill(QQuickItem *parent = nullptr);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void changed();

private:
    QColor from_;
    QColor to_;
    qreal radius_ = 0;
    qreal lineWidth_ = 0;
    bool isBanner_ = false;
};

} // namespace stowlark
