// CCgReports.h: what went wrong in the middle of some work, told when the work is done.
//
//   Reports reports;
//   reports.add(CxFileDelete(path));            // a success is none
//   reports.add(CCG_ERROR, 30, {CCgParm::ofText("fileName")});
//   ...
//   reports.send();
//
// A report goes through the error logger, and from there may come back to the very object that is at work.
#pragma once

#include "logging/CCgInternalError.h"

#include <initializer_list>
#include <utility>
#include <vector>

namespace zk::logging {

class Reports {
public:
    void add(CCgResult const& result)
    {
        if (!result.ok())
            entries_.push_back({result, 0, 0, {}});
    }
    void add(CCgLevel level, std::int32_t key, std::initializer_list<CCgParm> parameters)
    {
        CCgParmList list;
        for (CCgParm const& parameter : parameters)
            list.add(parameter);
        entries_.push_back({{}, level, key, std::move(list)});
    }

    /// Sends them in order, and forgets them.
    void send()
    {
        if (entries_.empty())
            return;
        std::vector<Entry> const entries = std::exchange(entries_, {});
        for (Entry const& entry : entries)
            if (entry.key == 0)
                reportResult(entry.result);
            else
                report(entry.level, entry.key, entry.parameters);
    }

private:
    struct Entry {
        CCgResult result;
        CCgLevel level;
        std::int32_t key;
        CCgParmList parameters;
    };
    std::vector<Entry> entries_;
};

}  // namespace zk::logging
