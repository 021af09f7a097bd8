// SPDX-License-Identifier: MIT

#include "many-widgets.h"

#include <kovakit-qt/image-manager/image-manager.h>
#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/file-type-map.h>
#include <kovakit-qt/utils/kova-locale.h>
#include <kovakit-qt/widgets/kova-button-path.h>
#include <kovakit-qt/widgets/kova-combo-box.h>
#include <kovakit-qt/widgets/kova-filter-bar.h>
#include <kovakit-qt/widgets/kova-line-edit.h>

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QToolButton>

namespace {

QWidget *kovaLineEdit(int index)
{
    auto *row = new KovaLineEdit;
    row->getPreLabel()->setText(QStringLiteral("Port"));
    row->getLineEdit()->setText(QString::number(index));
    return row;
}

QWidget *plainLineEditRow(int index)
{
    static const QString labelSheet = getStyleSheet("component.lineedit_label", false);
    static const QString sheet = getStyleSheet("component.lineedit", false);
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto *before = new QLabel;
    auto *field = new QLineEdit;
    auto *after = new QLabel;
    for (QWidget *part : {static_cast<QWidget *>(before), static_cast<QWidget *>(field),
                          static_cast<QWidget *>(after)})
        layout->addWidget(part);
    before->setStyleSheet(labelSheet);
    field->setStyleSheet(sheet);
    after->setStyleSheet(labelSheet);
    before->setBuddy(field);
    before->setText(QStringLiteral("Port"));
    field->setText(QString::number(index));
    return row;
}

const QStringList &boxEntries()
{
    static const QStringList entries = {QStringLiteral("Daily"), QStringLiteral("Weekly"),
                                        QStringLiteral("Monthly")};
    return entries;
}

QWidget *kovaComboBox(int)
{
    auto *box = new KovaComboBox;
    box->addItems(boxEntries());
    return box;
}

QWidget *plainComboBox(int)
{
    static const QString sheet = KovaComboBox().styleSheet();
    auto *box = new QComboBox;
    box->setStyleSheet(sheet);
    box->view()->setItemDelegate(new QStyledItemDelegate(box->view()));
    box->addItems(boxEntries());
    return box;
}

QWidget *kovaFilterBar(int)
{
    return new KovaFilterBar;
}

QWidget *plainFilterBar(int)
{
    static const QString sheet = KovaFilterBar().styleSheet();
    static const QString buttonSheet = getStyleSheet("component.filter_search_button", false);
    static const QPixmap picture = getGlobalImage("bt_search_dropdown", ImageManager::Default);
    auto *bar = new QLineEdit;
    auto *button = new QToolButton(bar);
    button->setIcon(picture);
    button->setIconSize(picture.size());
    button->setFocusPolicy(Qt::NoFocus);
    button->setStyleSheet(buttonSheet);
    button->setPopupMode(QToolButton::InstantPopup);
    button->move(kovaPx(4), kovaPx(2));
    button->setCursor(Qt::ArrowCursor);
    button->setFixedSize(kovaPx(34), kovaPx(24));
    bar->setStyleSheet(sheet);
    bar->setFixedHeight(kovaPx(28));
    return bar;
}

// The microseconds for each of @p count when @p refill fills a shown widget anew with that many.
double timeOfRefill(int count, const std::function<void()> &refill)
{
    refill();
    // As few as ten are over before the clock can tell.
    const int rounds = 500 / count;
    double time = 0;
    for (int i = 0; i < rounds; ++i) {
        QCoreApplication::processEvents();
        const Stopwatch watch;
        refill();
        time += watch.milliseconds();
    }
    return time * 1000 / (rounds * count);
}

// For each folder of a path of that many.
Bench::Side refreshOf(int folders)
{
    return [folders] {
        KovaButtonPath bar;
        bar.resize(600, bar.height());
        showAndWaitForPaint(&bar);
        QStringList names;
        for (int i = 0; i < folders; ++i)
            names << QStringLiteral("folder %1").arg(i, 3);
        const QString path = names.join(QLatin1Char('/'));
        return timeOfRefill(folders, [&] { bar.refresh(path); });
    };
}

// The same without the bar: two push buttons for each folder, one behind the other.
Bench::Side buttonsFor(int folders)
{
    return [folders] {
        const QString nameSheet = getStyleSheet("component.button_path_name_button", false);
        const QString arrowSheet = getStyleSheet("component.button_path_arrow", false);
        QWidget row;
        row.resize(600, 28);
        showAndWaitForPaint(&row);
        return timeOfRefill(folders, [&] {
            qDeleteAll(row.findChildren<QPushButton *>());
            for (int i = 0; i < 2 * folders; ++i) {
                auto *button = new QPushButton(&row);
                button->setFlat(true);
                button->setStyleSheet(i % 2 == 0 ? nameSheet : arrowSheet);
                button->setGeometry(30 * i, 0, 30, 26);
                button->show();
            }
        });
    };
}

// Millions of calls a second, with each word of @p questions in turn.
Bench::Side rateOf(QString (*lookUp)(const QString &), const QString &questions)
{
    return [lookUp, words = questions.split(QLatin1Char(' '))] {
        constexpr int times = 20000;
        int answered = 0;
        const Stopwatch watch;
        for (int i = 0; i < times; ++i)
            answered += !lookUp(words.at(i % words.size())).isEmpty();
        return answered / watch.milliseconds() / 1000;
    };
}

QString iconOf(const QString &extension)
{
    return FileTypeMap::getInstance()->getFiletypeMapping(extension, false);
}

QString languageOf(const QString &locale)
{
    return KovaLocale::getInstance()->getLanguageByLocale(locale);
}

void controls(Bench &bench)
{
    bench.compare({"controls/line-edit", "ms", 1.10}, buildAndShowTime(kovaLineEdit),
                  buildAndShowTime(plainLineEditRow));
    bench.compare({"controls/combo-box", "ms", 1.10}, buildAndShowTime(kovaComboBox),
                  buildAndShowTime(plainComboBox));
    bench.compare({"controls/filter-bar", "ms", 1.10}, buildAndShowTime(kovaFilterBar),
                  buildAndShowTime(plainFilterBar));
    bench.compare({"controls/folder-of-100-to-of-10", "us", 1.10}, refreshOf(100), refreshOf(10));
    bench.compare({"controls/folder-of-500-to-of-10", "us", 1.10}, refreshOf(500), refreshOf(10));
    bench.compare({"controls/buttons-for-500-to-for-10", "us", 0}, buttonsFor(500), buttonsFor(10));
    bench.measure({"controls/file-type-look-ups", "M/s", 0},
                  rateOf(iconOf, QStringLiteral("txt JPG tar mp3 unknown 7z")));
    bench.measure({"controls/locale-look-ups", "M/s", 0},
                  rateOf(languageOf, QStringLiteral("de_de en zh_hk pt_br ja_jp xx_yy")));
}

const BenchTopic topic(controls);

} // namespace
