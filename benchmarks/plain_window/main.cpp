// The least that a program with a Qt Quick window does: one button.

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>

int main(int argc, char *argv[]) {
    const QGuiApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    const QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/qt/qml/PlainWindow/PlainWindow.qml")));
    return engine.rootObjects().isEmpty() ? EXIT_FAILURE : QGuiApplication::exec();
}
