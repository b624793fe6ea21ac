#include "tour/driver.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QTest>
#include <QtQml/QQmlProperty>

namespace stowlark {
namespace {

QString label(QQuickItem *item) {
    return item->property("text").toString();
}

QString accessibleName(QQuickItem *item) {
    const QQmlProperty property(item, QStringLiteral("Accessible.name"), qmlContext(item));
    return property.isValid() ? property.read().toString() : QString();
}

/// What scrolls the item; null if nothing does.
QQuickItem *scrollerOf(QQuickItem *item) {
    while (item != nullptr &&
           !(item->inherits("QQuickFlickable") && item->property("interactive").toBool())) {
        item = item->parentItem();
    }
    return item;
}

} // namespace

Driver::Driver(QQuickWindow *window, Path screenshots)
    : window_(window)
    , screenshots_(std::move(screenshots)) {
    std::filesystem::create_directories(screenshots_);
    window_->requestActivate();
    if (!QTest::qWaitForWindowExposed(window_)) {
        throw TourFailure("the window did not open");
    }
}

void Driver::press(const QString &text) {
    QQuickItem *button = nullptr;
    wait(QStringLiteral("the button “%1”").arg(text), [&] {
        button = find([&](QQuickItem *item) {
            return item->inherits("QQuickAbstractButton") && item->isEnabled() &&
                   (label(item) == text || accessibleName(item) == text);
        });
        return button != nullptr;
    });
    QTest::mouseClick(window_, Qt::LeftButton, {}, bringIntoSight(button));
}

void Driver::choose(const QString &name, int index) {
    QQuickItem *picker = findNamed(name);
    picker->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(window_, Qt::Key_Space);
    QTest::keyClick(window_, Qt::Key_Home);
    for (int i = 0; i < index; ++i) {
        QTest::keyClick(window_, Qt::Key_Down);
    }
    QTest::keyClick(window_, Qt::Key_Space);
    wait(
        name, [&] { return picker->property("currentIndex").toInt() == index; }, 5);
}

void Driver::type(const QString &name, const QString &text) {
    QQuickItem *field = findNamed(name);
    QTest::mouseClick(window_, Qt::LeftButton, {}, bringIntoSight(field));
    QTest::keyClick(window_, Qt::Key_A, Qt::ControlModifier);
    for (const QChar c : text) {
        QTest::keyClick(window_, c.toLatin1());
    }
    wait(
        name, [&] { return label(field) == text; }, 5);
}

void Driver::drop(const QString &text, const QList<QUrl> &files, const std::function<void()> &hovering) {
    QQuickItem *item = find([&](QQuickItem *candidate) { return label(candidate) == text; });
    if (item == nullptr) {
        throw TourFailure("nothing shows " + text.toStdString());
    }
    const QPoint at = bringIntoSight(item);
    QMimeData data;
    data.setUrls(files);
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window_, &enter);
    QDragMoveEvent move(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window_, &move);
    if (!move.isAccepted()) {
        throw TourFailure("files cannot be dropped on " + text.toStdString());
    }
    if (hovering) {
        QTest::qWait(200);
        hovering();
    }
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(window_, &drop);
    QTest::qWait(100);
}

void Driver::enterInDialog(const Path &path) {
    QFileDialog *dialog = nullptr;
    wait(QStringLiteral("a file dialog"), [&] {
        dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        return dialog != nullptr && dialog->isVisible();
    });
    auto *field = dialog->findChild<QLineEdit *>();
    field->setText(displayText(path.native()));
    QTest::qWait(200);
    save(*dialog);
    QTest::keyClick(field, Qt::Key_Return);
    wait(QStringLiteral("the dialog to close"), [] { return QApplication::activeModalWidget() == nullptr; });
    QTest::qWait(100);
}

void Driver::dismissAlert(const QString &title) {
    QMessageBox *alert = nullptr;
    wait(title, [&] {
        alert = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        return alert != nullptr && alert->text() == title;
    });
    QTest::qWait(200);
    save(*alert);
    QTest::keyClick(alert, Qt::Key_Return);
    wait(QStringLiteral("the alert to close"), [] { return QApplication::activeModalWidget() == nullptr; });
}

void Driver::resize(QSize size) {
    window_->resize(size);
    QTest::qWait(200);
}

void Driver::save(QWidget &dialog) const {
    const QString folder = displayText(screenshots_.native());
    dialog.grab().save(QStringLiteral("%1/dialog-%2.png").arg(folder).arg(screenshotCount_));
}

void Driver::wait(const QString &what, const std::function<bool()> &condition, int seconds) {
    if (!QTest::qWaitFor(condition, seconds * 1000)) {
        screenshot(QStringLiteral("failed"));
        throw TourFailure("waited in vain for " + what.toStdString());
    }
}

void Driver::screenshot(const QString &name) {
    QTest::qWait(250); // animations
    const QString file =
        QStringLiteral("%1-%2.png").arg(++screenshotCount_, 2, 10, QLatin1Char('0')).arg(name);
    if (!window_->grabWindow().save(displayText((screenshots_ / file.toStdString()).native()))) {
        throw TourFailure("the screenshot could not be saved");
    }
}

QQuickItem *Driver::find(const std::function<bool(QQuickItem *)> &fits) const {
    QList<QQuickItem *> open{window_->contentItem()};
    while (!open.isEmpty()) {
        QQuickItem *item = open.takeFirst();
        if (item->isVisible()) {
            if (fits(item)) {
                return item;
            }
            open += item->childItems();
        }
    }
    return nullptr;
}

QQuickItem *Driver::findNamed(const QString &name) {
    QQuickItem *item = find([&](QQuickItem *candidate) { // not its caption, which is named alike
        return candidate->activeFocusOnTab() && accessibleName(candidate) == name;
    });
    if (item == nullptr) {
        throw TourFailure("there is no control named " + name.toStdString());
    }
    bringIntoSight(item);
    return item;
}

/// Turns the wheel until the middle of the item is below the header and above the lower edge, and at rest;
/// returns that point. What is far away is gone to with the Tab key.
QPoint Driver::bringIntoSight(QQuickItem *item) {
    if (std::abs(item->mapToScene({}).y()) > 5000 && item->activeFocusOnTab()) {
        item->forceActiveFocus(Qt::TabFocusReason);
    }
    QQuickItem *scroller = scrollerOf(item);
    const QPoint wheelAt(window_->width() / 2, window_->height() - 30);
    for (int turns = 0; turns < 500; ++turns) {
        const QPoint at = item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
        const int direction = at.y() < 110 ? 1 : at.y() > window_->height() - 40 ? -1 : 0;
        if (scroller == nullptr || (direction == 0 && !scroller->property("moving").toBool())) {
            return at;
        }
        if (direction != 0) {
            QWheelEvent wheel(wheelAt, window_->mapToGlobal(wheelAt), {}, {0, 60 * direction}, Qt::NoButton,
                              {}, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(window_, &wheel);
        }
        QTest::qWait(30);
    }
    throw TourFailure("it cannot be scrolled into sight: " + label(item).toStdString());
}

} // namespace stowlark
