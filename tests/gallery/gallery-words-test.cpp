// SPDX-License-Identifier: MIT

#include <words.h>

#include <QtTest>

// Compares what the gallery's sources say in tr() with its tables of words.
class GalleryWordsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void tablesHoldEveryWordAndNoOther_data();
    void tablesHoldEveryWordAndNoOther();

private:
    QStringList m_used;
};

namespace {

// What a translation must not lose: places for arguments, elements of rich text, and a mnemonic.
QStringList partsOf(const QString &text)
{
    static const QRegularExpression part("%\\d|<[^>]+>|&(?=\\w)");
    QStringList found;
    for (auto match = part.globalMatch(text); match.hasNext();)
        found.append(match.next().captured());
    found.sort();
    return found;
}

QString textOf(const QString &literals)
{
    static const QRegularExpression literal("\"((?:[^\"\\\\]|\\\\.)*)\"");
    QString text;
    for (auto match = literal.globalMatch(literals); match.hasNext();)
        text += match.next().captured(1);
    return text.replace("\\\"", "\"");
}

} // namespace

void GalleryWordsTest::initTestCase()
{
    static const QRegularExpression call(
        "\\b(?:tr|QT_TR_NOOP)\\(\\s*((?:\"(?:[^\"\\\\]|\\\\.)*\"\\s*)+)[,)]");
    QDirIterator files(GALLERY_SOURCES, {"*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        for (auto match = call.globalMatch(QString::fromUtf8(file.readAll())); match.hasNext();)
            m_used.append(textOf(match.next().captured(1)));
    }
    m_used.removeDuplicates();
    m_used.sort();
    QVERIFY(m_used.size() > 200);
}

void GalleryWordsTest::tablesHoldEveryWordAndNoOther_data()
{
    QTest::addColumn<QString>("language");
    for (const char *language : {"chs", "deu", "fra", "jpn"})
        QTest::newRow(language) << language;
}

void GalleryWordsTest::tablesHoldEveryWordAndNoOther()
{
    QFETCH(QString, language);
    QFile file(":/gallery/words/" + language + ".json");
    QVERIFY(file.open(QIODevice::ReadOnly));
    QStringList known = QJsonDocument::fromJson(file.readAll()).object().keys();
    known.sort();
    QCOMPARE(known, m_used);

    const GalleryWords words(language);
    for (const QString &word : qAsConst(m_used)) {
        const QString translated = words.translate("", qUtf8Printable(word), nullptr, -1);
        QVERIFY2(!translated.isEmpty(), qPrintable(word));
        QCOMPARE(partsOf(translated), partsOf(word));
    }
}

QTEST_GUILESS_MAIN(GalleryWordsTest)
#include "gallery-words-test.moc"
