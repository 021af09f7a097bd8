// SPDX-License-Identifier: MIT

#include "help-page.h"

#include "page-widgets.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/widgets/help-window.h>
#include <kovakit-qt/widgets/html-text-browser.h>
#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-radio-button.h>

#include <QApplication>
#include <QButtonGroup>
#include <QKeyEvent>
#include <QProgressBar>

namespace {

HelpWindow *openWindow()
{
    return qobject_cast<HelpWindow *>(QApplication::activeModalWidget());
}

bool isBusy()
{
    const HelpWindow *window = openWindow();
    return window && window->findChild<QProgressBar *>()->isVisible();
}

// Whether the page is there with both of its pictures.
bool isComplete()
{
    const HelpWindow *window = openWindow();
    if (!window || isBusy())
        return false;
    const auto *browser = window->findChild<HtmlTextBrowser *>();
    const auto shows = [browser](const char *name) {
        const QUrl url(QString::fromLatin1(name));
        const QVariant picture = browser->document()->resource(QTextDocument::ImageResource, url);
        return picture.value<QPixmap>().width() > 100;
    };
    return (shows("../image/folder.png") && shows("../image/chart.png"))
        || (shows("pictures/folder.png") && shows("pictures/chart.png"));
}

void pressKey(QWidget *window, int key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(window->focusWidget(), &press);
}

// Whether the second page is there; if not, follows the link to it and finds a word.
bool hasFound()
{
    HelpWindow *window = openWindow();
    if (!window || isBusy())
        return false;
    auto *browser = window->findChild<HtmlTextBrowser *>();
    if (!browser->source().path().isEmpty())
        return true;
    browser->setSource(QUrl(QStringLiteral("restore.html")));
    pressKey(window, Qt::Key_F, Qt::ControlModifier, QString());
    for (const QChar letter : QStringLiteral("copy"))
        pressKey(window, letter.toUpper().unicode(), Qt::NoModifier, letter);
    return false;
}

} // namespace

HelpPage::HelpPage()
    : m_modes(new QButtonGroup(this))
{
    add(makeServerCard());
    add(makeLanguageCard());
    addScene(
        QStringLiteral("article"), [this] { openHelp(QStringLiteral("enu"), HelpSite::Answers); },
        isComplete);
    addScene(
        QStringLiteral("offline"), [this] { openHelp(QStringLiteral("deu"), HelpSite::Gone); },
        isComplete);
    addScene(
        QStringLiteral("loading"), [this] { openHelp(QStringLiteral("enu"), HelpSite::Silent); },
        isBusy);
    addScene(
        QStringLiteral("nothing"), [this] { openHelp(QStringLiteral("enu"), HelpSite::Nothing); },
        [] { return openWindow() && !isBusy(); });
    addScene(
        QStringLiteral("find"), [this] { openHelp(QStringLiteral("enu"), HelpSite::Gone); },
        hasFound);
}

QWidget *HelpPage::makeServerCard()
{
    auto *card =
        new Card(tr("The help server"), tr("It runs inside the gallery. When it fails, the help "
                                           "window shows the page of the offline help."));
    const struct
    {
        HelpSite::Mode mode;
        QString name;
        QString explanation;
    } rows[] = {
        {HelpSite::Answers, tr("Answers"), tr("The article shows, and its pictures follow.")},
        {HelpSite::NotFound, QStringLiteral("404"), tr("The offline page shows at once.")},
        {HelpSite::Slow, tr("Slow"),
         tr("The article shows after two seconds, its pictures two later.")},
        {HelpSite::Silent, tr("Silent"), tr("The offline page shows after ten seconds.")},
        {HelpSite::Gone, tr("Gone"), tr("Nobody listens: the offline page shows at once.")},
        {HelpSite::Nothing, tr("Nothing"), tr("There is no offline page either.")},
    };
    for (const auto &row : rows) {
        auto *button = new KovaRadioButton(row.name);
        m_modes->addButton(button, row.mode);
        card->addExplained(button, row.explanation, 120);
    }
    m_modes->button(HelpSite::Answers)->setChecked(true);
    return card;
}

QWidget *HelpPage::makeLanguageCard()
{
    auto *card =
        new Card(tr("The help window"), tr("Escape closes it, Ctrl+F finds words. The offline "
                                           "page leads to another one and back."));
    auto *english = new KovaButton(tr("Help in English"), KovaButton::Apply);
    auto *german = new KovaButton(tr("Help in German"), KovaButton::Standard);
    const auto open = [this](const char *language) {
        openHelp(QString::fromLatin1(language), HelpSite::Mode(m_modes->checkedId()));
    };
    connect(english, &QPushButton::clicked, this, [open] { open("enu"); });
    connect(german, &QPushButton::clicked, this, [open] { open("deu"); });
    card->addRow({english, german});
    return card;
}

void HelpPage::openHelp(const QString &language, HelpSite::Mode mode)
{
    m_modes->button(mode)->setChecked(true);
    m_site.setMode(mode);
    HelpWindow::setKnowledgeBaseHost(m_site.address());
    HelpContext context;
    context.lang = language;
    context.offlineHelpDir = m_site.offlineFolder();
    context.link = m_site.offlinePage();
    context.section = QStringLiteral("gallery");
    context.version = QStringLiteral("1.0");
    auto *help = new HelpWindow(context, window());
    help->setAttribute(Qt::WA_DeleteOnClose);
    help->setWindowTitle(tr("Help"));
    help->setStyleSheet(help->styleSheet() + getStyleSheet("theme.window", false));
    help->resize(kovaPx(560), kovaPx(520));
    connect(help, &QDialog::finished, this, [this] { report(tr("The help window was closed.")); });
    help->show();
}
