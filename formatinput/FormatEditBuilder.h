#pragma once

#include "FormatParser.h"

#include <ZEFFormatEdit.h>

#include <QtCore/QList>
#include <QtCore/QPointer>

#include <list>
#include <memory>

//! Makes the cells and separators of a format; for an alternate it only reports mistakes.
class FormatEditBuilder : public FormatBuilder {
public:
    FormatEditBuilder(ZEFFormatEdit* edit, bool widgets);

    void addSeparator(const QString& text) override;
    void addCoercion(const QString& text, int start, int end) override;
    void addCell(const FormatCell& format) override;
    void setFinalPattern(const QString& pattern) override;
    void setSuffix(const QString& text) override;
    void reportUnexpected(const QString& character) override;
    void reportUnexpectedAfterMinimum(const QString& character) override;

    //! Shows the row and puts its cells behind \a before in the tab order. May run the code of others.
    void finish(QWidget* before);

private:
    void place(QWidget* widget);

    const QPointer<ZEFFormatEdit> m_edit;
    const bool m_widgets;
    std::shared_ptr<std::list<ZEFCoercionSpec>> m_coercions;
    QList<QPointer<QWidget>> m_placed;
    ZEFFormatCell* m_lastCell = nullptr;
    int m_separators = 0;
};
