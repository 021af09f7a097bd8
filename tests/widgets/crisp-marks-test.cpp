// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"

#include <QtTest>
#include <QtWidgets>

namespace {

// Art whose stripes have the width of half a pixel: a picture that was worked out for whole pixels
// shows a mixture of the two colours.
QByteArray stripesFile()
{
    QByteArray file = "P3 64 64 255\n";
    for (int pixel = 0; pixel < 64 * 64; ++pixel)
        file += pixel / 2 % 2 ? "0 0 255\n" : "255 0 0\n";
    return file;
}

// How far the stripes of a picture of 16 by 16 pixels around @p center differ; -1 for no stripes.
int contrast(QWidget &widget, const QPoint &center)
{
    const QImage all = widget.grab().toImage();
    const double ratio = all.devicePixelRatio();
    QVector<int> reds;
    for (int x = int((center.x() - 6) * ratio); x < int((center.x() + 6) * ratio); ++x) {
        const QColor color = all.pixelColor(x, int(center.y() * ratio));
        if (color.green() > 60)
            return -1;
        reds.append(color.red());
    }
    const auto [least, most] = std::minmax_element(reds.cbegin(), reds.cend());
    return *most - *least;
}

} // namespace

// Marks of style sheets and icons use every pixel of the device, and hosts' own icons do not
// change.
class CrispMarksTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void marksAndIconsUseAllDevicePixels();
    void hostsIconsStayAsTheyWere();
};

// All of it in a folder whose name holds what style texts could take for something else.
void CrispMarksTest::initTestCase()
{
    UIPathManager *paths = UIPathManager::getInstance();
    paths->setPath("resource_path", scratchFolder());
    paths->setPath("user_data_path", scratchFolder() + "/*a* %1 (16px) 2.5px *//");
    for (const char *state : {"", "_hover", "_click", "_disable"})
        writeScratchFile(QString("images/stripes%1.png").arg(state), stripesFile());
    writeScratchFile("images.json", R"({"images": ["stripes"], "tmp_images": ["stripes"]})");
    ImageManager::getInstance()->initialize(ImageManager::LazyLoad);

    QByteArray style = R"(== component.icon_button ==
/* plain */ QToolButton { border: 0px; }
== component.scrollbar ==
== component.checkbox ==
QCheckBox::indicator MARK
== component.radio_button ==
QRadioButton::indicator MARK
== component.combobox ==
QComboBox { %1 %2 }
QComboBox::drop-down { width: 20px; border: 0px; }
QComboBox::down-arrow MARK
== component.tree_item ==
QTreeView::indicator MARK
QTreeView::branch MARK
)";
    style.replace("MARK", "{ image: url(\"TMPIMG_LOC/tmp_stripes.png\");"
                          " width: 16px; height: 16px; border: 0px; }");
    StyleManager::getInstance()->initialize({writeScratchFile("marks.qss", style)});
}

void CrispMarksTest::marksAndIconsUseAllDevicePixels()
{
    const double ratio = qGuiApp->devicePixelRatio();
    QCOMPARE(ratio, qMax(1.0, qEnvironmentVariable("QT_SCALE_FACTOR").toDouble()));
    KovaCheckBox check(QString(), nullptr);
    KovaRadioButton radio(QString(), nullptr);
    KovaComboBox combo;
    KovaIconButton icon(QString("stripes"));
    KovaTreeWidget tree;
    ItemDelegate delegate;
    tree.setHeaderHidden(true);
    tree.setItemDelegate(&delegate);
    tree.setFrameStyle(QFrame::NoFrame);
    tree.setIndentation(20);
    auto *item = new QTreeWidgetItem(&tree, {QString()});
    item->setCheckState(0, Qt::Checked);
    tree.setStyleSheet(getStyleSheet("component.tree_item", false));
    check.resize(16, 16);
    radio.resize(16, 16);
    combo.resize(60, 30);
    icon.resize(24, 24);
    const QVector<std::pair<QWidget *, QPoint>> places = {{&check, {8, 8}},   {&radio, {8, 8}},
                                                          {&combo, {49, 15}}, {&icon, {12, 12}},
                                                          {&tree, {10, 10}},  {&tree, {30, 10}}};
    // Two device pixels for each pair of stripes show both colours, one and a half still differ.
    const int least = ratio >= 2 ? 240 : ratio > 1 ? 60 : 0;
    for (const auto &[widget, center] : places) {
        widget->ensurePolished();
        const int actual = contrast(*widget, center);
        QVERIFY2(actual >= least,
                 qPrintable(QString("%1: %2").arg(widget->metaObject()->className()).arg(actual)));
    }
}

void CrispMarksTest::hostsIconsStayAsTheyWere()
{
    QPixmap stripes;
    stripes.loadFromData(stripesFile());
    QPixmap plain(32, 32);
    plain.fill(Qt::red);
    // Painted from the pixels of 16 by 16, the stripes of the first mix.
    QIcon icon(stripes.scaled(32, 32));
    icon.addPixmap(plain, QIcon::Disabled);
    KovaCheckBox check(QString(), nullptr);
    KovaRadioButton radio(QString(), nullptr);
    QPushButton button;
    const QVector<QAbstractButton *> hosts = {&check, &radio, &button};
    for (const bool enabled : {true, false}) {
        for (QAbstractButton *host : hosts) {
            host->setIcon(icon);
            host->setIconSize({16, 16});
            host->resize(60, 30);
            host->setEnabled(enabled);
            QCOMPARE(contrast(*host, {30, 15}), 0);
        }
    }
    QVERIFY(!QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps));
}

QTEST_MAIN(CrispMarksTest)
#include "crisp-marks-test.moc"
