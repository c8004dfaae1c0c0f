#pragma once

#include <QtCore/QByteArray>

#include <algorithm>

//! An input of this target: what to do with a form, one letter for each step, up to the first "<"; then the
//! form.
struct FormInput {
    explicit FormInput(QByteArrayView input)
        : plan(input.first(std::min(lengthOfPlan(input), input.size())))
        , form(input.sliced(plan.size()))
    {
    }

    QByteArrayView plan;
    QByteArrayView form;

private:
    static qsizetype lengthOfPlan(QByteArrayView input)
    {
        return std::find(input.begin(), input.end(), '<') - input.begin();
    }
};
