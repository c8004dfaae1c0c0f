#pragma once

#include <ZEFUIExport.h>

#include <QtCore/QList>
#include <QtCore/QString>

/*!
 * Which characters may stand for which others, and at which positions of a text.
 *
 * Its text is a row of character pairs: the first of each pair is looked for, the second is put in
 * its place. ZEFCoercionSpec(u"0O1I"_s, 0, -1) reads a 0 as O and a 1 as I at every
 * position. A cell asks its n-th coercion about its n-th character only, so that one coercion covers one
 * character there, whatever its range.
 *
 * A plain value: copy it freely. Characters are UTF-16 code units. Any text and any position is
 * safe: a last character without a partner is ignored, and positions outside a text give no variants.
 */
class ZEFUI_EXPORT ZEFCoercionSpec {
public:
    //! \a start and \a end are positions from 0; an \a end of -1 means the end of the text.
    ZEFCoercionSpec(const QString& spec, int start, int end);

    QString spec() const;
    void setSpec(const QString& spec);
    int start() const;
    void setStart(int start);
    int end() const;
    void setEnd(int end);

    /*!
     * Whether \a position is in the range. With an end, that end still belongs to the range and
     * the start is not asked: positions before it are in range too.
     */
    bool inRange(int position) const;

    /*!
     * Appends to \a output a copy of \a input for each pair whose first character stands at
     * \a position, with that one character replaced. Returns how many were appended.
     */
    int coerce(int position, const QString& input, QList<QString>& output) const;

    //! The same for every position from the start up to, but not including, the end.
    int coerce(const QString& input, QList<QString>& output) const;

    bool operator==(const ZEFCoercionSpec& other) const = default;

private:
    friend class CoercionSearch;

    QString replacements(int position, QChar character) const;

    QString m_spec;
    int m_start;
    int m_end;
};
