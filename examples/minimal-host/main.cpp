// SPDX-License-Identifier: MIT

// The shortest real host: it says where its things are, in this order, and then uses the widgets.

#include <kovakit-qt/kovakit-qt.h>

#include <QApplication>
#include <QDir>
#include <QJsonDocument>
#include <QLabel>
#include <QStandardPaths>
#include <QVBoxLayout>

static QMap<QString, QString> readStrings(const QString &path)
{
    QFile file(path);
    QMap<QString, QString> strings;
    if (!file.open(QIODevice::ReadOnly))
        return strings;
    const QVariantMap table = QJsonDocument::fromJson(file.readAll()).toVariant().toMap();
    for (auto entry = table.begin(); entry != table.end(); ++entry)
        strings.insert(entry.key(), entry.value().toString());
    return strings;
}

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    app.setApplicationName(QStringLiteral("minimal-host"));
    const QDir theme(app.arguments().value(1, QStringLiteral(THEME_DIR)));

    UIPathManager::getInstance()->setPath(QStringLiteral("resource_path"), theme.path());
    UIPathManager::getInstance()->setPath(
        QStringLiteral("user_data_path"),
        QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
    ComponentStrings::getInstance()->installStrings(
        readStrings(theme.filePath(QStringLiteral("strings/enu.json"))));
    ImageManager::getInstance()->initialize(ImageManager::LazyLoad);
    std::vector<QString> styles;
    for (const QFileInfo &file : QDir(theme.filePath(QStringLiteral("styles"))).entryInfoList())
        styles.push_back(file.filePath());
    StyleManager::getInstance()->initialize(styles);

    QWidget window;
    auto *answer = new QLabel(QStringLiteral("Nobody has asked yet."));
    auto *button = new KovaButton(QStringLiteral("Delete"), KovaButton::Red);
    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(answer, 1, Qt::AlignCenter);
    layout->addWidget(button, 0, Qt::AlignCenter);
    QObject::connect(button, &KovaButton::clicked, [&window, answer] {
        const int code = showConfirmMsg(QStringLiteral("Delete"),
                                        QStringLiteral("Delete this file for good?"), &window);
        answer->setText(code == QMessageBox::Ok ? QStringLiteral("The file is deleted.")
                                                : QStringLiteral("The file is still there."));
        window.setWindowTitle(answer->text());
    });
    window.resize(kovaPx(560), kovaPx(360));
    window.setWindowTitle(QStringLiteral("Minimal host"));
    window.show();
    return app.exec();
}
