#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QSet>
#include <QtCore/QString>

class QXmlStreamReader;

//! Something in a form that would end the process in Qt's form loader.
struct FormFault {
    qint64 line = 0;
    //! Half a sentence, for instance: the loader cannot create the layout class Flow of "flow"
    QString reason;
    //! The layout class that Qt does not have; empty with faults of other kinds.
    QString layoutClass = {};
};

/*!
 * Finds what keeps Qt from building a form: a layout of an unknown class, elements nested or classes promoted
 * so deeply, or in a circle, that the stack is used up, and rows and columns for which no memory suffices.
 * What Qt itself refuses in an orderly way, broken XML for instance, is no fault here.
 */
class FormCheck {
public:
    //! The classes that the loader creates without a promotion.
    struct Classes {
        QSet<QString> layouts;
        QSet<QString> widgets;
    };

    //! How deep elements may be nested and how often a class may be promoted: far more than people draw, and
    //! little enough for the smallest stack.
    static constexpr qsizetype deepest = 300;

    explicit FormCheck(const Classes& classes)
        : m_classes(classes)
    {
    }

    //! Takes notice of what \a xml has just read; called for each token of the form.
    void look(const QXmlStreamReader& xml);
    //! The faults in the order of their lines, after the last token.
    QList<FormFault> faults() const;

    //! The faults of a whole form.
    static QList<FormFault> faultsOf(const QByteArray& contents, const Classes& classes);

private:
    struct UsedClass {
        QString className;
        QString objectName;
        qint64 line;
    };

    void startElement(const QXmlStreamReader& xml);
    void endElement(const QXmlStreamReader& xml);
    void checkPlace(const QXmlStreamReader& xml);
    const UsedClass* firstEndlessPromotion() const;

    const Classes& m_classes;
    QList<FormFault> m_faults;
    qsizetype m_depth = 0;
    bool m_isTooDeep = false;
    bool m_isCount = false;
    bool m_takesText = false;
    QString m_text;
    QString m_promoted;
    QList<UsedClass> m_used;
    QSet<QString> m_usedNames;
    QHash<QString, QString> m_bases;
};
