// SystemCatalog.h: a message catalog of the system's own format, as its C library reads it. Linux alone.
//
//   SystemCatalog const catalog("/tmp/a.cat");
//   catalog.text(1, 7);                  // what catgets() gives; nothing if it has no such message
#pragma once

#include <optional>
#include <string>

namespace zk::test {

class SystemCatalog {
public:
    /// @throws std::runtime_error if it cannot be opened
    explicit SystemCatalog(std::string const& path);
    ~SystemCatalog();
    SystemCatalog(SystemCatalog const&) = delete;
    SystemCatalog& operator=(SystemCatalog const&) = delete;

    std::optional<std::string> text(int set, int number) const;

private:
    void* catalog_;
};

}  // namespace zk::test
