// modelgenFixture.h: diagrams given as text, and what the host makes of them.
//
//   Reading read("class A {\n x : int\n}\n");       // @startuml and @enduml are put around it
//   read.classNamed("A").attributes.size();          // 1
//   read.messages();                                 // "": nothing to complain about
//   Generated made("class A\n");
//   made.file("A.h");                                // its text
#pragma once

#include "examples/modelgen/cppWriter.h"
#include "examples/modelgen/pumlReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <stdexcept>
#include <string>

namespace modelgen::test {

class Reading {
public:
    explicit Reading(std::string const& body) : Reading(Raw(), "@startuml\n" + body + "@enduml\n") { }

    struct Raw { };
    Reading(Raw, std::string const& text) : report_(stream_)
    {
        PumlReader reader(model, report_);
        reader.read("m.puml", CString(std::string_view(text)));
        reader.finish();
    }

    Classifier const& classNamed(char const* name) const
    {
        Classifier const* const found = model.find(model.packages().front(), name);
        if (!found)
            throw std::runtime_error(std::string("no class ") + name);
        return *found;
    }
    std::string messages() const { return stream_.str(); }
    bool hasErrors() const { return report_.hasErrors(); }
    Report& report() { return report_; }

    Model model;

protected:
    std::ostringstream stream_;
    Report report_;
};

class Generated : public Reading, private FileSink {
public:
    explicit Generated(std::string const& body) : Reading(body)
    {
        CppWriter writer;
        if (hasErrors())
            return;
        writer.prepare(model, report_);
        if (!hasErrors())
            writer.write(*this);
    }

    std::string const& file(std::string const& path) const
    {
        auto const found = files.find(path);
        if (found == files.end())
            throw std::runtime_error("no file " + path);
        return found->second;
    }

    std::map<std::string, std::string> files;

private:
    void put(CString const& path, CString const& content) override
    {
        bool const isNew = files.emplace(path.GetString(), content.GetString()).second;
        EXPECT_TRUE(isNew) << path << " is written twice";
    }
};

/// A type in one line: "Map<String,[]<Book>>".
inline std::string spelled(Type const& type)
{
    std::string text = type.isConst ? "const " : "";
    text += type.name.GetString();
    for (std::size_t i = 0; i < type.arguments.size(); ++i)
        text += (i == 0 ? "<" : ",") + spelled(type.arguments[i]);
    return type.arguments.empty() ? text : text + ">";
}

}  // namespace modelgen::test
