// SPDX-License-Identifier: MIT

#include "fuzz.h"

#include <kovakit-qt/utils/component-strings.h>
#include <kovakit-qt/utils/escape-tooltip.h>
#include <kovakit-qt/utils/file-type-map.h>
#include <kovakit-qt/utils/kova-locale.h>

#include <QTextDocument>

// The look-ups of words, codes and icon names, and tooltips that show a text as it is.

namespace {

void checkToolTip(const QString &text)
{
    QTextDocument document;
    document.setHtml(getHtmlEscapedStringForToolTip(text));
    // A carriage return shows as nothing.
    QString lines = text;
    lines.remove(QLatin1Char('\r')).replace(QLatin1Char('\n'), QChar::LineSeparator);
    expectEqual(document.toRawText(), lines, "The tooltip shows another text.");
}

void checkStrings(const QString &text)
{
    QMap<QString, QString> table;
    for (const QString &line : text.split(QLatin1Char('\n')))
        table.insert(line.section(QLatin1Char('='), 0, 0), line.section(QLatin1Char('='), 1));
    ComponentStrings *strings = ComponentStrings::getInstance();
    strings->installStrings(table);
    for (auto it = table.constBegin(); it != table.constEnd(); ++it) {
        expect(strings->hasString(it.key()), "what is installed is there");
        expectEqual(strings->getString(it.key()), it.value(), "A key has another text.");
    }
    if (!table.contains(text))
        expectEqual(strings->getString(text), text, "What is missing shows its key.");
}

void checkNames(const QString &text)
{
    expect(KovaLocale::getInstance()->getLanguageByLocale(text).size() == 3,
           "a locale has a language code of three letters");
    expect(FileTypeMap::getInstance()
               ->getFiletypeMapping(text, true)
               .endsWith(QLatin1String("_removed.png")),
           "an extension has an icon");
}

} // namespace

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    startFuzzing(argc, argv);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = textOf(data, size);
    checkToolTip(text);
    checkStrings(text);
    checkNames(text);
    return 0;
}
