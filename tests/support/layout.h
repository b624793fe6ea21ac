#pragma once

#include <QQuickItem>
#include <QQuickWindow>
#include <QTranslator>

namespace stowlark {

/// Every text of the views, longer by half, with a word that cannot be broken.
class LongWords : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char * /*context*/, const char *text, const char * /*disambiguation*/,
                      int /*n*/) const override {
        const QString source = QString::fromUtf8(text);
        return source + QString(source.size() / 2 + 3, u'n');
    }
};

inline QList<QQuickItem *> visibleTexts(QQuickItem *item) {
    QList<QQuickItem *> texts;
    for (QQuickItem *child : item->childItems()) {
        if (child->isVisible() && child->opacity() > 0) {
            const bool isText = child->inherits("QQuickText") || child->inherits("QQuickTextInput");
            texts += isText ? QList{child} : visibleTexts(child);
        }
    }
    return texts;
}

inline QRectF inWindow(const QQuickItem *item) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

inline QRectF shownInWindow(const QQuickItem *item) {
    QRectF shown = inWindow(item);
    for (const QQuickItem *parent = item->parentItem(); parent != nullptr; parent = parent->parentItem()) {
        shown = parent->clip() ? shown & inWindow(parent) : shown;
    }
    return shown;
}

inline QString describe(const QQuickItem *item) {
    const QRectF r = inWindow(item);
    return QStringLiteral("“%1” at %2, %3, %4 x %5")
        .arg(item->property("text").toString().left(30))
        .arg(r.x())
        .arg(r.y())
        .arg(r.width())
        .arg(r.height());
}

/// A text that is wider or higher than its item, or reaches out of what it stands in.
inline QString outOfPlace(const QQuickItem *item) {
    constexpr double tolerance = 1;
    if (item->property("paintedWidth").toDouble() > item->width() + tolerance ||
        item->property("paintedHeight").toDouble() > item->height() + tolerance) {
        return QStringLiteral("too small for its text: ") + describe(item);
    }
    bool scrolls = false;
    for (const QQuickItem *parent = item->parentItem(); parent != nullptr; parent = parent->parentItem()) {
        const QRectF r = inWindow(item);
        const QRectF around = inWindow(parent);
        scrolls =
            scrolls || parent->parentItem() == nullptr || parent->parentItem()->inherits("QQuickFlickable");
        const bool fitsAcross =
            r.left() >= around.left() - tolerance && r.right() <= around.right() + tolerance;
        const bool fitsDown =
            scrolls || (r.top() >= around.top() - tolerance && r.bottom() <= around.bottom() + tolerance);
        if (around.width() > 0 && around.height() > 0 && !(fitsAcross && fitsDown)) {
            return QStringLiteral("out of its %1: ").arg(QLatin1String(parent->metaObject()->className())) +
                   describe(item);
        }
    }
    return {};
}

inline QStringList overlaps(const QList<QQuickItem *> &texts) {
    QStringList all;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        for (qsizetype j = 0; j < i; ++j) {
            const QRectF both = shownInWindow(texts[i]) & shownInWindow(texts[j]);
            if (both.width() > 1 && both.height() > 1) {
                all += describe(texts[i]) + QStringLiteral(" is over ") + describe(texts[j]);
            }
        }
    }
    return all;
}

/// What is wrong with the texts in sight, a line each.
inline QStringList faults(QQuickItem *shown) {
    const QList<QQuickItem *> texts = visibleTexts(shown);
    QStringList all = overlaps(texts);
    for (const QQuickItem *text : texts) {
        all += outOfPlace(text);
    }
    all.removeAll(QString());
    if (texts.size() < 4) {
        all += QStringLiteral("hardly any text is shown");
    }
    return all;
}

} // namespace stowlark
