// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/test-host.h"
#include "support/user-input.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QtTest>

namespace {

QString string(const char *key)
{
    return ComponentStrings::getInstance()->getString(key);
}

QLabel *labelWith(const QWidget &sheet, const char *text)
{
    for (QLabel *label : sheet.findChildren<QLabel *>()) {
        if (label->text().contains(text))
            return label;
    }
    return nullptr;
}

// Of a desktop that puts the accept button last.
class AcceptLastStyle : public QProxyStyle
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        return hint == SH_DialogButtonLayout ? int(QDialogButtonBox::GnomeLayout)
                                             : QProxyStyle::styleHint(hint, option, widget, data);
    }
};

} // namespace

class KovaMessageSheetTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { delete m_window; }
    void typesChooseIconAndButtons();
    void customTextsFallBackToTheStrings();
    void informativeTextComesAndGoes();
    void widthFollowsTheParent();
    void heightFitsTheText();
    void textsAreScaled();
    void changingTheTypeConnectsAgain();
    void doneIsHarmlessAtAnyTime();
    void focusOfATextIsSeen();
    void isADialogNamedByItsMessage();
    void movieRunsWhileTheSheetIsShown();
    void messageOverAWindowNotShownTakesTheBox();

private:
    QWidget *m_window = nullptr;
};

void KovaMessageSheetTest::initTestCase()
{
    QApplication::setStyle(new AcceptLastStyle);
    setUpHost();
}

void KovaMessageSheetTest::init()
{
    m_window = new QWidget;
    m_window->resize(kovaPx(900), kovaPx(700));
    m_window->show();
}

void KovaMessageSheetTest::typesChooseIconAndButtons()
{
    struct Case
    {
        int type;
        const char *icon;
        int buttons;
        const char *ok;
        const char *styleKey;
    };
    const int one = QMessageBox::Ok;
    const int two = QMessageBox::Ok | QMessageBox::Discard;
    const Case cases[] = {
        {0, "app_img", 0, "", "processing"},
        {1, "icon_information", one, "ok", "other"},
        {2, "icon_warning", one, "ok", "other"},
        {3, "icon_question", two, "ok", "other"},
        {5, "icon_warning", two, "ok", "other"},
        {6, "", 0, "", "processing"},
        {9 /* unknown */, "", 0, "", "other"},
        {4, "icon_information", two, "wizard_client_upgrade", "other"},
    };
    for (const Case &c : cases) {
        const KovaMessageSheet sheet(KovaMessageSheet::MessageType(c.type), "text", m_window);
        QCOMPARE(sheet.styleSheet(),
                 getStyleSheet(QString("component.message_sheet_") + c.styleKey, false));
        QImage icon;
        for (const QLabel *label : sheet.findChildren<QLabel *>()) {
            if (label->pixmap(Qt::ReturnByValue).width() > 0)
                icon = label->pixmap(Qt::ReturnByValue).toImage();
        }
        QCOMPARE(icon,
                 *c.icon ? getGlobalImage(c.icon, ImageManager::Default).toImage() : QImage());

        QCOMPARE(int(sheet.findChild<QDialogButtonBox *>()->standardButtons()), c.buttons);
        if (auto *button = qobject_cast<QPushButton *>(sheet.button(QMessageBox::Ok))) {
            QCOMPARE(button->text(), string(c.ok));
            QVERIFY(button->isDefault());
            QCOMPARE(button->height(), kovaPx(28));
            QCOMPARE(button->minimumWidth(), kovaPx(120));
        }
        if (const QAbstractButton *button = sheet.button(QMessageBox::Discard))
            QCOMPARE(button->text(), string("cancel"));
    }
}

void KovaMessageSheetTest::customTextsFallBackToTheStrings()
{
    const MsgBoxCustomBtnText texts{"Get it", QString()};
    const KovaMessageSheet sheet(KovaMessageSheet::Upgrade, "text", texts, m_window);
    QCOMPARE(sheet.button(QMessageBox::Ok)->text(), "Get it");
    QCOMPARE(sheet.button(QMessageBox::Discard)->text(), string("cancel"));
}

void KovaMessageSheetTest::informativeTextComesAndGoes()
{
    KovaMessageSheet sheet(KovaMessageSheet::Warning, "main", "details", m_window);
    const QPointer<QLabel> first = labelWith(sheet, "details");
    QVERIFY(first);
    QCOMPARE(first->styleSheet(), getStyleSheet("component.message_sheet_informative_text", false));
    sheet.setInformativeText(QString());
    QVERIFY(!first->isVisibleTo(&sheet));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!first);
    sheet.setInformativeText(QString());
    sheet.setInformativeText("again");
    QVERIFY(labelWith(sheet, "again"));
    QVERIFY(labelWith(sheet, "main"));
}

void KovaMessageSheetTest::widthFollowsTheParent()
{
    const std::pair<int, int> widths[] = {{600, 540}, {560, 520}, {544, 504},
                                          {540, 480}, {400, 360}, {2000, 540}};
    for (const auto &[parent, sheet] : widths) {
        m_window->resize(qRound(parent * DPIinfo::getInstance()->getDPI()), 400);
        const KovaMessageSheet made(KovaMessageSheet::Information, "text", m_window);
        QCOMPARE(made.width(), kovaPx(sheet));
    }
    m_window->resize(kovaPx(10), 400);
    QVERIFY(KovaMessageSheet(KovaMessageSheet::Information, "text", m_window).width() >= 0);
}

void KovaMessageSheetTest::heightFitsTheText()
{
    const QString sentence = "A sentence that is longer than a word. ";
    KovaMessageSheet sheet(KovaMessageSheet::Question, "Short.", sentence.repeated(12), m_window);
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
             sheet.contentsRect().right() - sheet.layout()->contentsMargins().right());

    sheet.setInformativeText(sentence.repeated(2));
    QCoreApplication::processEvents();
    QVERIFY(fits());
    QVERIFY(sheet.height() < first.height() - kovaPx(60));
    sheet.setText(sentence.repeated(10));
    QCoreApplication::processEvents();
    QVERIFY(fits());
}

void KovaMessageSheetTest::textsAreScaled()
{
    const KovaMessageSheet sheet(KovaMessageSheet::Information,
                                 "<b style='font-size: 10px'>%1 &lt;</b>", "%1 tiny", m_window);
    QCOMPARE(labelWith(sheet, "font-size")->text(),
             QString("<p style='line-height: %1px;'><b style='font-size: %2px'>%3</b></p>")
                 .arg(QString::number(kovaPx(24)), QString::number(kovaPx(10)), "%1 &lt;"));
    QCOMPARE(labelWith(sheet, "tiny")->text(), QString("<p style='line-height: %1px;'>%2</p>")
                                                   .arg(QString::number(kovaPx(20)), "%1 tiny"));
}

void KovaMessageSheetTest::changingTheTypeConnectsAgain()
{
    KovaMessageSheet sheet(KovaMessageSheet::Information, "text", m_window);
    sheet.setMessageType(KovaMessageSheet::Question);
    sheet.setDefaultButton(nullptr);
    QSignalSpy finished(&sheet, &KovaSheet::finished);
    sheet.showSheet();
    sheet.button(QMessageBox::Discard)->click();
    QCOMPARE(finished, (QList<QList<QVariant>>{{8388608}, {8388608}}));
}

void KovaMessageSheetTest::doneIsHarmlessAtAnyTime()
{
    KovaMessageSheet sheet(KovaMessageSheet::Question, "text", m_window);
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

void KovaMessageSheetTest::focusOfATextIsSeen()
{
    KovaMessageSheet sheet(KovaMessageSheet::Warning, "main", "details", m_window);
    showActive(m_window);
    sheet.showSheet();
    for (const char *text : {"main", "details"}) {
        QLabel *label = labelWith(sheet, text);
        label->setFocus();
        const QImage focused = label->grab().toImage();
        sheet.button(QMessageBox::Ok)->setFocus();
        const QImage plain = label->grab().toImage();
        QVERIFY(focused != plain);
        const QRect inside = plain.rect().adjusted(kovaPx(4), 0, 0, 0);
        QCOMPARE(focused.copy(inside), plain.copy(inside));
    }
}

void KovaMessageSheetTest::isADialogNamedByItsMessage()
{
    KovaMessageSheet sheet(KovaMessageSheet::Warning, "The <b>disk</b> &amp; films", "details",
                           m_window);
    QCOMPARE(QAccessible::queryAccessibleInterface(&sheet)->role(), QAccessible::Dialog);
    QCOMPARE(spoken(&sheet), "The disk & films");
    sheet.setAccessibleName("Own name");
    QCOMPARE(spoken(&sheet), "Own name");
}

void KovaMessageSheetTest::movieRunsWhileTheSheetIsShown()
{
    const std::function<void(KovaMessageSheet &)> ways[] = {
        [](KovaMessageSheet &sheet) { sheet.showSheet(); },
        [](KovaMessageSheet &sheet) { sheet.showSheetWithBlock(); },
        [](KovaMessageSheet &sheet) {
            QTimer::singleShot(0, &sheet, [&] {
                for (const QLabel *label : sheet.findChildren<QLabel *>())
                    QVERIFY(!label->movie() || label->movie()->state() == QMovie::Running);
                sheet.quit();
            });
            sheet.exec();
            sheet.showSheet();
        },
    };
    QLabel elsewhere;
    QPointer<QMovie> movie;
    for (const auto &show : ways) {
        {
            KovaMessageSheet sheet("Copying…", themeFolder() + "/images/processing.gif", m_window);
            for (const QLabel *label : sheet.findChildren<QLabel *>()) {
                if (label->movie())
                    movie = label->movie();
            }
            QVERIFY(movie && !movie->parent());
            QCOMPARE(movie->scaledSize(), QSize(kovaPxRounded(32), kovaPxRounded(32)));
            show(sheet);
            QCOMPARE(movie->state(), QMovie::Running);
            sheet.done(0);
            QCOMPARE(movie->state(), QMovie::NotRunning);
            if (&show == std::end(ways) - 1)
                elsewhere.setMovie(movie);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(bool(movie), &show == std::end(ways) - 1);
    }
    delete movie;
}

void KovaMessageSheetTest::messageOverAWindowNotShownTakesTheBox()
{
    QWidget window;
    QLabel inside(&window);
    for (QWidget *parent : {&window, static_cast<QWidget *>(&inside)}) {
        QTimer::singleShot(0, this, [] {
            QWidget *box = QApplication::activeModalWidget();
            QVERIFY(qobject_cast<QMessageBox *>(box));
            QCOMPARE(box->styleSheet(), getStyleSheet("component.confirm_message_box", false));
            press(box, Qt::Key_Escape);
        });
        QCOMPARE(showConfirmMsg("title", "text", parent), int(QMessageBox::Cancel));
    }
}

QTEST_MAIN(KovaMessageSheetTest)
#include "kova-msg-sheet-test.moc"
