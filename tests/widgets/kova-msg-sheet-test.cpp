#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/warning-catcher.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QDialogButtonBox>
#include <QMovie>
#include <QPushButton>
#include <QtTest>

namespace {

QString textOf(const KovaMessageSheet &sheet, QMessageBox::StandardButton which)
{
    const QAbstractButton *button = sheet.button(which);
    return button ? button->text() : QString();
}

// The width in design pixels that a sheet takes in a parent of @p parentWidth design pixels.
double widthIn(double parentWidth)
{
    QWidget parent;
    parent.resize(qRound(parentWidth * DPIinfo::getInstance()->getDPI()), 400);
    const KovaMessageSheet sheet(KovaMessageSheet::Information, QStringLiteral("text"), &parent);
    return sheet.width();
}

QLabel *labelWith(const QWidget &sheet, const char *text)
{
    for (QLabel *label : sheet.findChildren<QLabel *>()) {
        if (label->text().contains(QLatin1String(text)))
            return label;
    }
    return nullptr;
}

} // namespace

class KovaMessageSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { setUpHost(); }
    void init();
    void cleanup();
    void typesChooseIconAndButtons_data();
    void typesChooseIconAndButtons();
    void customTextsFallBackToTheStrings();
    void informativeTextComesAndGoes();
    void widthFollowsTheParent();
    void heightFitsTheText();
    void textsAreScaled();
    void changingTheTypeConnectsAgain();
    void doneIsHarmlessAtAnyTime();
    void survivesABrokenMovie();
    void isADialogNamedByItsMessage();

private:
    QWidget *m_window = nullptr;
};

void KovaMessageSheetTest::init()
{
    m_window = new QWidget;
    m_window->resize(900, 600);
    m_window->show();
}

void KovaMessageSheetTest::cleanup()
{
    delete m_window;
}

void KovaMessageSheetTest::typesChooseIconAndButtons_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("icon");
    QTest::addColumn<int>("buttons");
    QTest::addColumn<QString>("ok");
    QTest::addColumn<QString>("styleKey");

    const int both = QMessageBox::Ok | QMessageBox::Discard;
    const QString ok = QStringLiteral("ok");
    const QString upgrade = QStringLiteral("wizard_client_upgrade");
    const QString quiet = QStringLiteral("component.message_sheet_processing");
    const QString other = QStringLiteral("component.message_sheet_other");
    QTest::newRow("processing") << 0 << "app_img" << 0 << QString() << quiet;
    QTest::newRow("information") << 1 << "icon_information" << int(QMessageBox::Ok) << ok << other;
    QTest::newRow("warning") << 2 << "icon_warning" << int(QMessageBox::Ok) << ok << other;
    QTest::newRow("question") << 3 << "icon_question" << both << ok << other;
    QTest::newRow("upgrade") << 4 << "icon_information" << both << upgrade << other;
    QTest::newRow("warning question") << 5 << "icon_warning" << both << ok << other;
    QTest::newRow("animation") << 6 << QString() << 0 << QString() << quiet;
    QTest::newRow("unknown") << 9 << QString() << 0 << QString() << other;
}

void KovaMessageSheetTest::typesChooseIconAndButtons()
{
    QFETCH(int, type);
    QFETCH(QString, icon);
    QFETCH(int, buttons);
    QFETCH(QString, ok);
    QFETCH(QString, styleKey);
    const auto string = [](const QString &key) {
        return ComponentStrings::getInstance()->getString(key);
    };

    WarningCatcher warnings;
    const KovaMessageSheet sheet(KovaMessageSheet::MessageType(type), QStringLiteral("text"),
                                 m_window);
    QCOMPARE(sheet.styleSheet(), getStyleSheet(styleKey, false));
    bool iconFound = false;
    for (const QLabel *label : sheet.findChildren<QLabel *>()) {
        iconFound |= !icon.isEmpty()
                  && label->pixmap(Qt::ReturnByValue).toImage()
                         == getGlobalImage(icon, ImageManager::Default).toImage();
    }
    QCOMPARE(iconFound, !icon.isEmpty());

    const auto *box = sheet.findChild<QDialogButtonBox *>();
    QCOMPARE(int(box->standardButtons()), buttons);
    if (buttons & QMessageBox::Ok) {
        auto *button = qobject_cast<QPushButton *>(sheet.button(QMessageBox::Ok));
        QCOMPARE(button->text(), string(ok));
        QVERIFY(button->isDefault());
        QCOMPARE(button->height(), kovaPx(28));
        QCOMPARE(button->minimumWidth(), kovaPx(120));
    }
    if (buttons & QMessageBox::Discard) {
        QCOMPARE(textOf(sheet, QMessageBox::Discard), string(QStringLiteral("cancel")));
    }
    QCOMPARE(warnings.take(), QStringList());
}

void KovaMessageSheetTest::customTextsFallBackToTheStrings()
{
    const KovaMessageSheet both(
        KovaMessageSheet::Question, QStringLiteral("text"),
        MsgBoxCustomBtnText{QStringLiteral("Format"), QStringLiteral("Keep")}, m_window);
    QCOMPARE(textOf(both, QMessageBox::Ok), QStringLiteral("Format"));
    QCOMPARE(textOf(both, QMessageBox::Discard), QStringLiteral("Keep"));
    const KovaMessageSheet one(KovaMessageSheet::Upgrade, QStringLiteral("text"),
                               MsgBoxCustomBtnText{QStringLiteral("Get it"), QString()}, m_window);
    QCOMPARE(textOf(one, QMessageBox::Ok), QStringLiteral("Get it"));
    QCOMPARE(textOf(one, QMessageBox::Discard),
             ComponentStrings::getInstance()->getString(QStringLiteral("cancel")));
}

void KovaMessageSheetTest::informativeTextComesAndGoes()
{
    KovaMessageSheet sheet(KovaMessageSheet::Warning, QStringLiteral("main"),
                           QStringLiteral("details"), m_window);
    const QPointer<QLabel> first = labelWith(sheet, "details");
    QVERIFY(first);
    QCOMPARE(first->styleSheet(), getStyleSheet("component.message_sheet_informative_text", false));
    sheet.setInformativeText(QString());
    QVERIFY(!first->isVisibleTo(&sheet));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!first);
    sheet.setInformativeText(QString());
    sheet.setInformativeText(QStringLiteral("again"));
    QVERIFY(labelWith(sheet, "again"));
    QVERIFY(labelWith(sheet, "main"));
}

void KovaMessageSheetTest::widthFollowsTheParent()
{
    const auto width = [](double design) { return double(kovaPx(design)); };
    QCOMPARE(widthIn(600), width(540));
    QCOMPARE(widthIn(560), width(520));
    QCOMPARE(widthIn(540), width(480));
    QCOMPARE(widthIn(400), width(360));
    QCOMPARE(widthIn(544), width(504));
    QCOMPARE(widthIn(2000), width(540));
    QVERIFY(widthIn(10) >= 0);
}

void KovaMessageSheetTest::heightFitsTheText()
{
    m_window->resize(kovaPx(900), kovaPx(700));
    const QString sentence = QStringLiteral("A sentence that is longer than a word. ");
    KovaMessageSheet sheet(KovaMessageSheet::Question, QStringLiteral("Short."),
                           sentence.repeated(12), m_window);
    KovaMask::createMask(&sheet, m_window, QColor(0, 0, 0, 20));
    const auto fits = [&] {
        const auto *box = sheet.findChild<QDialogButtonBox *>();
        int above = sheet.contentsRect().top();
        for (const MessageLabel *label : sheet.findChildren<MessageLabel *>()) {
            if (label->height() != label->heightForWidth(label->width()) || label->y() < above)
                return false;
            above = label->geometry().bottom();
        }
        return box->y() > above && sheet.contentsRect().contains(box->geometry())
            && m_window->rect().contains(QRect(sheet.mapTo(m_window, QPoint()), sheet.size()));
    };
    // From the first frame on, and the same when everything has settled.
    sheet.showSheet();
    QVERIFY(fits());
    const QRect first = sheet.geometry();
    QCoreApplication::processEvents();
    QVERIFY(fits());
    QCOMPARE(sheet.geometry(), first);

    // Accept before the second button, both at the right, on every platform.
    const QAbstractButton *second = sheet.button(QMessageBox::Discard);
    QVERIFY(sheet.button(QMessageBox::Ok)->geometry().right() < second->x());
    QCOMPARE(second->mapTo(&sheet, second->rect().topRight()).x(),
             sheet.width() - sheet.layout()->contentsMargins().right()
                 - sheet.contentsMargins().right() - 1);

    sheet.setInformativeText(sentence.repeated(2));
    QCoreApplication::processEvents();
    QVERIFY(fits());
    QVERIFY(sheet.height() < first.height() - kovaPx(60));
    sheet.setText(sentence.repeated(10));
    QCoreApplication::processEvents();
    QVERIFY(fits());
    sheet.done(0);
}

void KovaMessageSheetTest::textsAreScaled()
{
    const KovaMessageSheet sheet(KovaMessageSheet::Information,
                                 QStringLiteral("<b style='font-size: 10px'>%1 &lt;</b>"),
                                 QStringLiteral("%1 tiny"), m_window);
    QCOMPARE(labelWith(sheet, "font-size")->text(),
             QStringLiteral("<p style='line-height: %1px;'><b style='font-size: %2px'>")
                     .arg(QString::number(kovaPx(24)), QString::number(kovaPx(10)))
                 + QStringLiteral("%1 &lt;</b></p>"));
    QCOMPARE(labelWith(sheet, "tiny")->text(),
             QStringLiteral("<p style='line-height: %1px;'>").arg(kovaPx(20))
                 + QStringLiteral("%1 tiny</p>"));
}

void KovaMessageSheetTest::changingTheTypeConnectsAgain()
{
    KovaMessageSheet sheet(KovaMessageSheet::Information, QStringLiteral("text"), m_window);
    sheet.setMessageType(KovaMessageSheet::Question);
    sheet.setDefaultButton(nullptr);
    QSignalSpy finished(&sheet, &KovaSheet::finished);
    sheet.showSheet();
    sheet.button(QMessageBox::Discard)->click();
    QCOMPARE(finished,
             (QList<QList<QVariant>>{{int(QMessageBox::Discard)}, {int(QMessageBox::Discard)}}));
}

void KovaMessageSheetTest::doneIsHarmlessAtAnyTime()
{
    KovaMessageSheet sheet(KovaMessageSheet::Question, QStringLiteral("text"), m_window);
    QSignalSpy finished(&sheet, &KovaSheet::finished);
    sheet.done(5);
    sheet.showSheet();
    sheet.done(6);
    sheet.done(7);
    sheet.quit();
    QCOMPARE(finished, (QList<QList<QVariant>>{{5}, {6}, {7}, {0}}));
    QVERIFY(!sheet.isVisible());

    // A result of the time before must not end the next run.
    QTimer::singleShot(0, &sheet, [&] { sheet.done(9); });
    QCOMPARE(sheet.exec(), 9);
}

void KovaMessageSheetTest::survivesABrokenMovie()
{
    KovaMessageSheet sheet(QStringLiteral("Copying"), QStringLiteral("/no/such/movie.gif"),
                           m_window);
    QTimer::singleShot(0, &sheet, &KovaMessageSheet::quit);
    QCOMPARE(sheet.exec(), 0);
}

void KovaMessageSheetTest::isADialogNamedByItsMessage()
{
    KovaMessageSheet sheet(KovaMessageSheet::Warning,
                           QStringLiteral("The disk <b>Photos</b> &amp; films is full"),
                           QStringLiteral("details"), m_window);
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&sheet);
    QVERIFY(accessible);
    QCOMPARE(accessible->role(), QAccessible::Dialog);
    QCOMPARE(accessible->text(QAccessible::Name),
             QStringLiteral("The disk Photos & films is full"));
    sheet.setAccessibleName(QStringLiteral("Own name"));
    QCOMPARE(accessible->text(QAccessible::Name), QStringLiteral("Own name"));
}

QTEST_MAIN(KovaMessageSheetTest)
#include "kova-msg-sheet-test.moc"
