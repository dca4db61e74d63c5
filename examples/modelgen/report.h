// report.h: what there is to say about the input, one line each: "file:line: warning: text".
//
//   Report report(std::cerr);
//   int const file = report.addFile("library.puml");
//   report.warning({file, 7}, "not understood: passed over");
//   report.hasErrors();                                          // false
#pragma once

#include "examples/modelgen/model.h"

#include <iosfwd>

namespace modelgen {

class Report {
public:
    /// Errors beyond the first `toldErrors` are only counted.
    explicit Report(std::ostream& stream, int toldErrors = 20) : stream_(stream), toldErrors_(toldErrors) { }

    /// Gives the number that places in this file carry.
    int addFile(CString const& name);

    void warning(Place place, CString const& text);

    /// An error: nothing will be generated.
    void error(Place place, CString const& text);

    /// Says how many errors were left untold, if any.
    void close();

    bool hasErrors() const { return errors_ > 0; }
    int errors() const { return errors_; }
    int warnings() const { return warnings_; }

private:
    void write(Place place, char const* kind, CString const& text);

    std::ostream& stream_;
    int const toldErrors_;
    std::vector<CString> files_;
    int errors_ = 0;
    int warnings_ = 0;
};

/// A piece of input for a message: in quotes, cut to a readable length, without characters that a terminal obeys.
CString quoted(CString const& text);

}  // namespace modelgen
