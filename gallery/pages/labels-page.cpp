// SPDX-License-Identifier: MIT

#include "labels-page.h"

#include "column-splitter.h"
#include "page-widgets.h"

#include <kovakit-qt/style/dpi-info.h>
#include <kovakit-qt/style/style-manager.h>
#include <kovakit-qt/utils/escape-tooltip.h>
#include <kovakit-qt/widgets/kova-button.h>
#include <kovakit-qt/widgets/kova-label.h>
#include <kovakit-qt/widgets/link-label.h>

#include <QVBoxLayout>

#include <utility>

LabelsPage::LabelsPage()
{
    add(makeSplitter());
    add(makeLinks());
    add(makeTooltips());
}

QWidget *LabelsPage::makeSplitter()
{
    auto *card =
        new Card(tr("Labels that wrap"),
                 tr("Move the handle between the columns, with the mouse or the arrow keys: "
                    "each text takes the height that it needs."));
    auto *splitter = new ColumnSplitter(tr("Width of the first column"));
    connect(splitter, &ColumnSplitter::widthChanged, this,
            [this](int width) { report(tr("The first column is %1 pixels wide.").arg(width)); });
    splitter->setStyleSheet(getStyleSheet("gallery.splitter", false));
    splitter->setHandleWidth(kovaPx(9));
    splitter->setChildrenCollapsible(false);
    const QStringList texts = {
        tr("The backup of your documents runs every evening, as long as the computer "
           "is plugged in and the network drive can be reached."),
        tr("Versions that are older than a month are thinned out to one for each week, "
           "and to one for each month after a year."),
    };
    for (const QString &text : texts) {
        auto *column = new QWidget;
        auto *layout = new QVBoxLayout(column);
        layout->setContentsMargins(kovaPx(6), 0, kovaPx(6), 0);
        for (const QString &part : {text, tr("What follows moves down.")}) {
            auto *label = new KovaLabel(part);
            label->setWordWrap(true);
            label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
            layout->addWidget(label);
        }
        layout->addStretch(1);
        column->setMinimumWidth(kovaPx(140));
        splitter->addWidget(column);
    }
    splitter->setFixedHeight(kovaPx(150));
    splitter->setSizes({kovaPx(420), kovaPx(220)});
    card->add(splitter);
    return card;
}

QWidget *LabelsPage::makeLinks()
{
    auto *card = new Card(tr("Links"), tr("A link tells its owner that it was pressed, by mouse or "
                                          "with Return, and opens nothing itself."));
    const auto makeLink = [this](const QString &text, const QString &target) {
        auto *link = new LinkLabel(text);
        setStyleKey(link, "gallery.link");
        link->setHyperLink(target);
        connect(link, &LinkLabel::clicked, this, [this, link] {
            report(tr("The target of the link is %1.").arg(link->getHyperLink()));
        });
        return link;
    };
    LinkLabel *off = makeLink(tr("Not available"), QStringLiteral("https://example.org/none"));
    off->setEnabled(false);
    card->addRow({makeLink(tr("Release notes"), QStringLiteral("https://example.org/notes")),
                  makeLink(tr("Privacy"), QStringLiteral("https://example.org/privacy")), off});
    return card;
}

QWidget *LabelsPage::makeTooltips()
{
    auto *card = new Card(tr("Plain text in a tooltip"),
                          tr("Blanks, line breaks and signs are shown as they are. "
                             "Rest the pointer on the button."));
    auto *button = new KovaButton(tr("Show the rule"), KovaButton::Standard);
    const QString rule =
        QStringLiteral("if (size < 10 && name == \"R&D\")\n    skip <b>this</b> file;");
    button->setToolTip(getHtmlEscapedStringForToolTip(rule));
    connect(button, &QPushButton::clicked, this, [this, rule] { report(rule); });
    card->addRow({button});
    return card;
}
