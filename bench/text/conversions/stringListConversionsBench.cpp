// A text of 1,000,000 fields and the list of them, both ways.
#include "bench/text/perlTime.h"
#include "text/stringListConversions.h"

#include <benchmark/benchmark.h>

#ifdef ZK_BENCH_QT
#    include <QString>
#    include <QStringList>
#endif

#include <memory>
#include <string>

namespace {

constexpr int fields = 1000000;

// "name0,name7,...": fields of 5 to 9 characters.
std::string const& text()
{
    static std::string const made = [] {
        std::string all;
        for (int i = 0; i < fields; ++i)
            all += (i ? ",name" : "name") + std::to_string(i * 7 % 10007);
        return all;
    }();
    return made;
}
char const* const textInPerl = "my $t = join(q(,), map { q(name) . ($_ * 7 % 10007) } 0..999999);";

// The loop holds the freeing of the list too, as it does for every peer.
void split(benchmark::State& state)
{
    CString const all(text().c_str());
    for (auto _ : state) {
        std::unique_ptr<CStringList> const list(omConvertStringToStringList(all, ",", 1, 1));
        benchmark::DoNotOptimize(list->GetCount());
    }
}

void splitAtAny(benchmark::State& state)
{
    CString const all(text().c_str());
    for (auto _ : state) {
        std::unique_ptr<CStringList> const list(omConvertStringToStringList(all, ",;", 0, 0));
        benchmark::DoNotOptimize(list->GetCount());
    }
}

void join(benchmark::State& state)
{
    std::unique_ptr<CStringList> const list(omConvertStringToStringList(text().c_str(), ",", 1, 1));
    for (auto _ : state)
        benchmark::DoNotOptimize(omConvertStringListToString(list.get(), ", "));
}

BENCHMARK(split)->UseRealTime()->Name("split 1,000,000 fields into a CStringList/ours");
BENCHMARK(splitAtAny)->UseRealTime()->Name("split 1,000,000 fields at a set/ours");
BENCHMARK(join)->UseRealTime()->Name("join a CStringList of 1,000,000/ours");

#ifdef ZK_BENCH_QT

void qtSplit(benchmark::State& state)
{
    QString const all = QString::fromStdString(text());
    for (auto _ : state) {
        QStringList const list = all.split(QLatin1Char(','));
        benchmark::DoNotOptimize(list.size());
    }
}

void qtJoin(benchmark::State& state)
{
    QStringList const list = QString::fromStdString(text()).split(QLatin1Char(','));
    QString const separator(", ");
    for (auto _ : state)
        benchmark::DoNotOptimize(list.join(separator));
}

BENCHMARK(qtSplit)->UseRealTime()->Name("split 1,000,000 fields into a CStringList/QString::split");
BENCHMARK(qtJoin)->UseRealTime()->Name("join a CStringList of 1,000,000/QStringList::join");

#endif

[[maybe_unused]] bool const registered = [] {
    zk::bench::addPerl("split 1,000,000 fields into a CStringList", textInPerl,
                       "{ my @f = split(/,/, $t); }");
    zk::bench::addPerl("split 1,000,000 fields at a set", textInPerl, "{ my @f = split(/[,;]/, $t); }");
    return true;
}();

}  // namespace
