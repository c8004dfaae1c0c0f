#pragma once

#include <ZEFCoercionSpec.h>

#include <memory>
#include <vector>

/*!
 * The coercion specs of one format, in their order. The pool is their only owner; every cell of the
 * format holds the pool, and the specs that came before it are the first of the pool.
 */
class CoercionPool {
public:
    qsizetype count() const { return static_cast<qsizetype>(m_specs.size()); }
    const ZEFCoercionSpec* at(qsizetype index) const
    {
        return m_specs[static_cast<std::size_t>(index)].get();
    }
    void add(const QString& text, int start, int end)
    {
        m_specs.push_back(std::make_unique<ZEFCoercionSpec>(text, start, end));
    }

private:
    std::vector<std::unique_ptr<ZEFCoercionSpec>> m_specs;
};
