// cppWriter.h: writes a model as C++17, one header and one source for each class.
//
//   class Book {                      lending/Book.h      class Book { ... std::string title_; };
//     - title : String                lending/Book.cpp    std::string const& Book::getTitle() const ...
//   }
//
// Enumerations and templates have a header only. The result compiles as it stands, with the folder that holds it
// on the include path.
#pragma once

#include "examples/modelgen/cppProgram.h"
#include "examples/modelgen/languageWriter.h"

#include <memory>

namespace modelgen {

class CppWriter : public LanguageWriter {
public:
    void prepare(Model const& model, Report& report) override;
    void write(FileSink& sink) const override;

private:
    CString header(CppClass const& planned) const;
    CString source(CppClass const& planned) const;
    CString enumHeader(Classifier const& classifier) const;

    Model const* model_ = nullptr;
    std::unique_ptr<CppNames> names_;
    std::unique_ptr<CppTypes> types_;
    std::unique_ptr<CppProgram> program_;
    std::vector<std::vector<std::pair<CString, CString>>> literals_;  // by classifier: identifier and value
};

}  // namespace modelgen
