// Runs a target without libFuzzer: the files that are named, or all cases of the target once.

#include "FuzzApplication.h"
#include "FuzzMutator.h"
#include "FuzzTarget.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>

#include <algorithm>
#include <cstdio>
#include <random>
#include <vector>

namespace {

constexpr int mutations = FUZZ_MUTATIONS;
constexpr std::size_t largestMutant = 64 * 1024;

std::mt19937& randomNumbers()
{
    static std::mt19937 generator;
    return generator;
}

std::size_t randomBelow(std::size_t limit)
{
    return randomNumbers()() % limit;
}

QStringList filesBelow(const QString& folder)
{
    QStringList files;
    QDirIterator iterator(folder, QDir::Files, QDirIterator::Subdirectories);
    while (iterator.hasNext())
        files.append(iterator.next());
    files.sort();
    return files;
}

//! The corpus, the regression cases, and the files of the project that the list "seeds" names.
QStringList allCases()
{
    const QString folder = QString::fromUtf8(FUZZ_FOLDER);
    QStringList cases = filesBelow(folder + u"/corpus") + filesBelow(folder + u"/regressions");
    QFile list(folder + u"/seeds");
    if (list.open(QIODevice::ReadOnly | QIODevice::Text)) {
        while (!list.atEnd())
            cases += filesBelow(QString::fromUtf8(PROJECT_FOLDER) + u'/'
                                + QString::fromUtf8(list.readLine()).trimmed());
    }
    return cases;
}

void run(const QByteArray& input)
{
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.constData()),
                           static_cast<std::size_t>(input.size()));
}

void runMutations(const QList<QByteArray>& inputs)
{
    if constexpr (mutations > 0) {
        for (int seed = 0; seed < mutations; ++seed) {
            std::fprintf(stderr, "mutation %d\n", seed);
            randomNumbers().seed(static_cast<unsigned int>(seed));
            const QByteArray& input = inputs.at(seed % inputs.size());
            std::size_t size = std::min(static_cast<std::size_t>(input.size()), largestMutant);
            std::vector<std::uint8_t> mutant(largestMutant);
            std::copy_n(input.constData(), size, mutant.data());
            for (int round = 0; round <= seed % 8; ++round)
                size = LLVMFuzzerCustomMutator(mutant.data(), size, mutant.size(),
                                               static_cast<unsigned int>(randomNumbers()()));
            LLVMFuzzerTestOneInput(mutant.data(), size);
        }
    }
}

} // namespace

std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maximumSize)
{
    if (size < maximumSize && (size == 0 || randomBelow(2) == 0)) {
        const std::size_t position = randomBelow(size + 1);
        std::copy_backward(data + position, data + size, data + size + 1);
        data[position] = static_cast<std::uint8_t>(randomBelow(256));
        return size + 1;
    }
    data[randomBelow(size)] = static_cast<std::uint8_t>(randomBelow(256));
    return size;
}

int main(int argc, char** argv)
{
    const FuzzApplication application;
    QStringList files;
    for (int i = 1; i < argc; ++i)
        files.append(QString::fromLocal8Bit(argv[i]));
    const bool all = files.isEmpty();
    if (all)
        files = allCases();

    QList<QByteArray> inputs;
    for (const QString& name : std::as_const(files)) {
        // Said before it runs: a crash does not tell which case it was.
        std::fprintf(stderr, "%s\n", name.toLocal8Bit().constData());
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot be read\n");
            return 1;
        }
        inputs.append(file.readAll());
        run(inputs.constLast());
    }
    FUZZ_REQUIRE(!inputs.isEmpty());
    if (all)
        runMutations(inputs);
    std::printf("%lld cases, %d mutations\n", static_cast<long long>(inputs.size()), all ? mutations : 0);
    return 0;
}
