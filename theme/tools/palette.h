// SPDX-License-Identifier: MIT

#pragma once

#include <QMap>
#include <QRgb>
#include <QString>
#include <QStringList>
#include <QVector>

/**
 * The colours of the theme, read from its palette file.
 *
 * Pictures and style files write a colour as "$" followed by its name. A style file uses the plain
 * colours; a picture may also use the roles, which stand for another colour in each state.
 */
class Palette
{
public:
    /** How many states a picture has: at rest, hover, click and disable, in this order. */
    static constexpr int stateCount = 4;

    /** Reads the palette file; on failure error() tells why. */
    explicit Palette(const QString &fileName);

    /** What went wrong so far, for the person who runs the tool; empty when nothing did. */
    [[nodiscard]] QString error() const { return m_error; }

    /** Every plain colour of the palette, opaque. */
    [[nodiscard]] QVector<QRgb> colors() const;

    /** The text with every plain colour put in; an unknown name sets error(). */
    [[nodiscard]] QString applyTo(const QString &text);

    /** The text with the plain colours and the roles of one state put in. */
    [[nodiscard]] QString applyTo(const QString &text, int state);

private:
    QString replaceNames(const QString &text, const QMap<QString, QString> &colors);

    QMap<QString, QString> m_colors;
    QMap<QString, QStringList> m_roles;
    QString m_error;
};
