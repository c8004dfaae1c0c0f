#pragma once

#include <QtCore/QTranslator>

/*!
 * A text as a translation could look: longer and with accents, still readable. Placeholders, markup and
 * mnemonics stay as they are. What is cut off lacks its closing bracket.
 */
QString pseudoTranslated(const QString& text);

//! Translates the texts of one context so.
class PseudoTranslator : public QTranslator {
    Q_OBJECT

public:
    explicit PseudoTranslator(const QString& context);

    bool isEmpty() const override;
    QString translate(const char* context, const char* sourceText, const char* disambiguation,
                      int n) const override;

private:
    QByteArray m_context;
};
