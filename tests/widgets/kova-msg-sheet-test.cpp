// SPDX-License-Identifier: MIT

#include <kovakit-qt/kovakit-qt.h>

#include "support/answers.h"
#include "support/test-host.h"
#include "support/user-input.h"

#include <QtTest>
#include <QtWidgets>

namespace {

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
    void textsComeAndGo();
    void widthFollowsTheParent();
    void heightFitsTheText();
    void changingTheTypeConnectsAgain();
    void focusOfATextIsSeen();
    void movieRunsWhileTheSheetIsShown();

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
    const int one = QMessageBox::Ok;
    const int two = QMessageBox::Ok | QMessageBox::Discard;
    // The type, its icon, its buttons, the text of the first and the style.
    const std::tuple<int, const char *, int, const char *, const char *> cases[] = {
        {0, "app_img", 0, "", "processing"},
        {1, "icon_information", one, "OK", "other"},
        {2, "icon_warning", one, "OK", "other"},
        {3, "icon_question", two, "OK", "other"},
        {5, "icon_warning", two, "OK", "other"},
        {6, "", 0, "", "processing"},
        {9 /* unknown */, "", 0, "", "other"},
        {4, "icon_information", two, "Upgrade now", "other"},
    };
    for (const auto &[type, image, buttons, ok, style] : cases) {
        const KovaMessageSheet sheet(KovaMessageSheet::MessageType(type), "text", m_window);
        QCOMPARE(sheet.styleSheet(),
                 getStyleSheet(QString("component.message_sheet_") + style, false));
        QImage icon;
        for (const QLabel *label : sheet.findChildren<QLabel *>()) {
            if (label->pixmap(Qt::ReturnByValue).width() > 0)
                icon = label->pixmap(Qt::ReturnByValue).toImage();
        }
        QCOMPARE(icon, *image ? getGlobalImage(image, ImageManager::Default).toImage() : QImage());

        QCOMPARE(int(sheet.findChild<QDialogButtonBox *>()->standardButtons()), buttons);
        if (auto *button = qobject_cast<QPushButton *>(sheet.button(QMessageBox::Ok))) {
            QCOMPARE(button->text(), ok);
            QVERIFY(button->isDefault());
            QCOMPARE(button->height(), kovaPx(28));
            QCOMPARE(button->minimumWidth(), kovaPx(120));
        }
    }
    const KovaMessageSheet custom(KovaMessageSheet::Upgrade, "text", {"Get it", ""}, m_window);
    QCOMPARE(custom.button(QMessageBox::Ok)->text(), "Get it");
    QCOMPARE(custom.button(QMessageBox::Discard)->text(), "Cancel");
}

void KovaMessageSheetTest::textsComeAndGo()
{
    KovaMessageSheet sheet(KovaMessageSheet::Warning, "<b style='font-size: 10px'>%1</b> &lt; 2",
                           "%1 tiny", m_window);
    const QString paragraph = "<p style='line-height: %1px;'>%2</p>";
    const QString main = QString("<b style='font-size: %1px'>").arg(kovaPx(10)) + "%1</b> &lt; 2";
    QCOMPARE(labelWith(sheet, "font-size")->text(),
             paragraph.arg(QString::number(kovaPx(24)), main));
    const QPointer<QLabel> first = labelWith(sheet, "tiny");
    QCOMPARE(first->text(), paragraph.arg(QString::number(kovaPx(20)), "%1 tiny"));
    QCOMPARE(first->styleSheet(), getStyleSheet("component.message_sheet_informative_text", false));

    QCOMPARE(QAccessible::queryAccessibleInterface(&sheet)->role(), QAccessible::Dialog);
    QCOMPARE(spoken(&sheet), "%1 < 2");
    sheet.setAccessibleName("Own name");
    QCOMPARE(spoken(&sheet), "Own name");

    sheet.setInformativeText(QString());
    QVERIFY(!first->isVisibleTo(&sheet));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!first);
    sheet.setInformativeText(QString());
    sheet.setInformativeText("again");
    QVERIFY(labelWith(sheet, "again"));
}

void KovaMessageSheetTest::widthFollowsTheParent()
{
    // In design pixels: the parent, a message sheet and an input sheet over it.
    const int widths[][3] = {{2000, 540, 480}, {560, 520, 480}, {544, 504, 480},
                             {540, 480, 480},  {518, 478, 478}, {400, 360, 360}};
    for (const auto &[parent, message, input] : widths) {
        m_window->resize(qRound(parent * DPIinfo::getInstance()->getDPI()), 400);
        QCOMPARE(KovaMessageSheet(KovaMessageSheet::Warning, "a", m_window).width(),
                 kovaPx(message));
        QCOMPARE(KovaInputSheet("a", m_window).width(), kovaPx(input));
    }
    m_window->resize(kovaPx(10), 400);
    QVERIFY(KovaMessageSheet(KovaMessageSheet::Warning, "a", m_window).width() > 0);
    QVERIFY(KovaInputSheet("a", m_window).width() > 0);
}

void KovaMessageSheetTest::heightFitsTheText()
{
    const QString sentence = "A sentence that is longer than a word. ";
    KovaMessageSheet sheet(KovaMessageSheet::Question, "Short.", sentence.repeated(12), m_window);
    KovaMask::createMask(&sheet, m_window, KovaMask::dimColor);
    const QAbstractButton *ok = sheet.button(QMessageBox::Ok);
    const QAbstractButton *second = sheet.button(QMessageBox::Discard);
    const auto fits = [&] {
        int above = 0;
        for (const MessageLabel *label : sheet.findChildren<MessageLabel *>()) {
            if (label->height() != label->heightForWidth(label->width()) || label->y() < above)
                return false;
            above = label->geometry().bottom();
        }
        return ok->parentWidget()->y() > above;
    };
    // From the first frame on.
    sheet.showSheet();
    QVERIFY(fits());
    const int height = sheet.height();

    // Accept before the second button, both at the right, on every platform.
    QVERIFY(ok->geometry().right() < second->x());
    QCOMPARE(second->mapTo(&sheet, second->rect().topRight()).x(),
             sheet.contentsRect().right() - sheet.layout()->contentsMargins().right());

    sheet.setInformativeText(sentence.repeated(2));
    QCoreApplication::processEvents();
    QVERIFY(fits());
    QVERIFY(sheet.height() < height - kovaPx(60));
}

void KovaMessageSheetTest::changingTheTypeConnectsAgain()
{
    KovaMessageSheet sheet(KovaMessageSheet::Information, "text", m_window);
    sheet.setMessageType(KovaMessageSheet::Question);
    sheet.setDefaultButton(nullptr);
    QSignalSpy finished(&sheet, &KovaSheet::finished);
    sheet.showSheet();
    sheet.button(QMessageBox::Discard)->click();
    QCOMPARE(finished, (QList<QList<QVariant>>{{refused}, {refused}}));
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

void KovaMessageSheetTest::movieRunsWhileTheSheetIsShown()
{
    QLabel elsewhere;
    QPointer<QMovie> movie;
    for (const bool isShared : {false, true}) {
        {
            KovaMessageSheet sheet("Copying…", themeFolder() + "/images/processing.gif", m_window);
            for (const QLabel *label : sheet.findChildren<QLabel *>())
                movie = label->movie() ? label->movie() : movie.data();
            QVERIFY(movie);
            QCOMPARE(movie->scaledSize(), QSize(kovaPxRounded(32), kovaPxRounded(32)));
            sheet.showSheet();
            QCOMPARE(movie->state(), QMovie::Running);
            sheet.done(0);
            QCOMPARE(movie->state(), QMovie::NotRunning);
            if (isShared)
                elsewhere.setMovie(movie);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(bool(movie), isShared);
    }
    delete movie;
    KovaMessageSheet("Copying…", "/no/such/movie.gif", m_window).showSheet();
}

QTEST_MAIN(KovaMessageSheetTest)
#include "kova-msg-sheet-test.moc"
