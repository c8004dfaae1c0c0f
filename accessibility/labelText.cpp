#include "labelText.h"

#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtWidgets/QLabel>

namespace {

//! Reads \a text as QLabel does; false when it is plain.
bool readMarkup(QTextDocument* document, const QString& text, Qt::TextFormat format)
{
    if (format == Qt::MarkdownText)
        document->setMarkdown(text);
    else if (format == Qt::RichText || (format == Qt::AutoText && Qt::mightBeRichText(text)))
        document->setHtml(text);
    else
        return false;
    return true;
}

QString withoutMnemonics(QString text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        // of two ampersands the second one stays
        if (text.at(i) == u'&')
            text.remove(i, 1);
    }
    return text;
}

} // namespace

QString readableText(const QLabel* label, const QString& text)
{
    QTextDocument document;
    const QString plain = readMarkup(&document, text, label->textFormat()) ? document.toPlainText() : text;
    return label->buddy() ? withoutMnemonics(plain) : plain;
}

QString readableText(const QLabel* label)
{
    return label ? readableText(label, label->text()) : QString();
}

QList<Link> linksOf(const QLabel* label)
{
    QTextDocument document;
    if (!readMarkup(&document, label->text(), label->textFormat()))
        return {};
    QList<Link> links;
    int end = -1;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QString target = fragment.charFormat().anchorHref();
            if (target.isEmpty())
                continue;
            // a link with several formats, such as a bold word
            if (fragment.position() == end && links.constLast().target == target)
                links.last().text += fragment.text();
            else
                links.append({fragment.text(), target});
            end = fragment.position() + fragment.length();
        }
    }
    return links;
}
