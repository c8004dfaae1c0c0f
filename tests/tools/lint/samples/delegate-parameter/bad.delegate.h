#pragma once

#include <QtCore/QObject>
#include <QtCore/QVariant>

class ZEFPipeFacilityInvocationContext;

enum class State { On, Off };

/* A delegate. */
class Delegate final : public QObject {
    Q_OBJECT
    Q_PROPERTY(int count READ count CONSTANT)

public:
    explicit Delegate(QObject* parent = nullptr);
    int count() const { return m_count; }
    void helper_clicked();

public Q_SLOTS:
    void ok_clicked(ZEFPipeFacilityInvocationContext* context, QVariant nameEdt_text, QVariant nameEdit_txt);
    void cancel_clicked(ZEFPipeFacilityInvocationContext* context, QVariant nameEdit_text_raw, QVariant, QString nameEdit_text);
    void agree_clicked();

private:
    int m_count = 0;
};
