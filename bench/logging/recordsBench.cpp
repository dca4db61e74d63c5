// Records that a logger rejects, and the formatting of one of 60 characters, against loggers of the same
// kind and the plain operations below them.
#include "logging/CCgLogManager.h"
#include "logging/CCgLogger.h"

#include <benchmark/benchmark.h>

#ifdef ZK_BENCH_SPDLOG
#    include <spdlog/logger.h>
#    include <spdlog/sinks/null_sink.h>
#endif
#ifdef ZK_BENCH_LOG4CPLUS
#    include <log4cplus/initializer.h>
#    include <log4cplus/logger.h>
#    include <log4cplus/loggingmacros.h>
#endif

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

constexpr char const* text = "The unit model.cpp was read from its file in 12 of 60 steps.";
constexpr std::int64_t fixedTime = 1714972089010;

struct Toolkit {
    Toolkit() { ccg_initManager(nullptr); }
    ~Toolkit() { ccg_shutdownManager(); }
};

// An object of a toolkit that runs for the whole program.
CCgObject* object(char const* name, char const* className)
{
    static Toolkit const toolkit;
    return ccg_getObject(name, className);
}

void rejectedByUs(benchmark::State& state)
{
    CCgObject* const logger = object("rejecting", "ccg_basiclogger");
    ccg_setProperty(logger, "level", "WARN");
    std::int32_t i = 0;
    for (auto _ : state)
        ccg_min(logger, __FILE__, nullptr, __LINE__, "unit %d", CCG_INT32, ++i, 0);
    ccg_releaseObject(logger);
}
BENCHMARK(rejectedByUs)->Name("rejected by level/ours");

void rejectedByALoad(benchmark::State& state)
{
    std::int32_t volatile level = 5000;
    std::int32_t i = 0;
    for (auto _ : state) {
        ++i;
        if (level <= 3000)
            std::printf("unit %d\n", i);
    }
}
BENCHMARK(rejectedByALoad)->Name("rejected by level/volatile load and branch");

#ifdef ZK_BENCH_SPDLOG
void rejectedBySpdlog(benchmark::State& state)
{
    spdlog::logger logger("rejecting", std::make_shared<spdlog::sinks::null_sink_mt>());
    logger.set_level(spdlog::level::warn);
    std::int32_t i = 0;
    for (auto _ : state)
        logger.debug("unit {}", ++i);
}
BENCHMARK(rejectedBySpdlog)->Name("rejected by level/spdlog");
#endif

#ifdef ZK_BENCH_LOG4CPLUS
void rejectedByLog4cplus(benchmark::State& state)
{
    static log4cplus::Initializer const initializer;
    log4cplus::Logger logger = log4cplus::Logger::getInstance(LOG4CPLUS_TEXT("rejecting"));
    logger.setLogLevel(log4cplus::WARN_LOG_LEVEL);
    std::int32_t i = 0;
    for (auto _ : state)
        LOG4CPLUS_DEBUG_FMT(logger, LOG4CPLUS_TEXT("unit %d"), ++i);
}
BENCHMARK(rejectedByLog4cplus)->Name("rejected by level/log4cplus");
#endif

void formatByUs(benchmark::State& state, char const* className)
{
    CCgObject* const formatter = object(className, className);
    CCgEvent event;
    event.time = fixedTime;
    event.level = CCG_ERROR;
    event.message = CCgI18Msg("catalog", 1, 2, text);
    event.msgId = std::string();
    ccg_lock();
    for (auto _ : state) {
        char* const line = formatter->objClass->formatter.format(formatter, &event);
        benchmark::DoNotOptimize(line);
        std::free(line);
    }
    ccg_unlock();
    ccg_releaseObject(formatter);
}

void basicFormat(benchmark::State& state)
{
    formatByUs(state, "ccg_basicformatter");
}
BENCHMARK(basicFormat)->Name("basic format/ours");

void basicPrintf(benchmark::State& state)
{
    char line[256];
    for (auto _ : state) {
        std::snprintf(line, sizeof line, "%04d-%02d-%02d %02d:%02d:%02d.%03d%+.2d:%02d %s\n", 2024, 5, 6, 7,
                      8, 9, 10, 2, 0, text);
        benchmark::DoNotOptimize(line);
    }
}
BENCHMARK(basicPrintf)->Name("basic format/snprintf");

void xmlFormat(benchmark::State& state)
{
    formatByUs(state, "ccg_xmlformatter");
}
BENCHMARK(xmlFormat)->Name("XML format/ours");

void xmlPrintf(benchmark::State& state)
{
    char record[512];
    for (auto _ : state) {
        std::snprintf(
            record, sizeof record,
            "<Message Id=\"%s\" Severity=\"%s\">\n"
            " <Time Millis=\"%lld\">%04d-%02d-%02d %02d:%02d:%02d.%03d%+.2d:%02d</Time>\n"
            " <LogText><![CDATA[%s]]></LogText>\n"
            " <TranslationInfo Type=\"XPG4\" Catalog=\"%s\" MsgKey=\"%d\" SetId=\"%d\"></TranslationInfo>\n"
            "</Message>\n",
            "None", "ERROR", static_cast<long long>(fixedTime), 2024, 5, 6, 7, 8, 9, 10, 2, 0, text,
            "catalog", 2, 1);
        benchmark::DoNotOptimize(record);
    }
}
BENCHMARK(xmlPrintf)->Name("XML format/snprintf");

void lockAndUnlock(benchmark::State& state)
{
    object("x", "ccg_basiclogger");
    for (auto _ : state) {
        ccg_lock();
        ccg_unlock();
    }
}
BENCHMARK(lockAndUnlock)->Name("the toolkit's lock/ours");

}  // namespace
