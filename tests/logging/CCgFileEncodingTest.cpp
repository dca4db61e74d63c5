#include "logging/CCgFileHandler.h"

#include "tests/logging/FileHandlers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class FileEncoding : public FileHandlerTest { };

constexpr char hiraganaA[] = "\xE3\x81\x82";

}  // namespace

TEST_F(FileEncoding, isUtf8ByDefault)
{
    startFiles();

    log(hiraganaA);

    EXPECT_EQ(content("a.log"), hiraganaA + std::string("\n"));
}

TEST_F(FileEncoding, isTheCodeSetOfTheProperty)
{
    startFiles("out.fileEncoding=SHIFT_JIS\n");

    log(hiraganaA);

    EXPECT_EQ(content("a.log"), "\x82\xA0\n");
    EXPECT_THAT(errorKeys(), IsEmpty());
}

TEST_F(FileEncoding, hasAQuestionMarkForWhatTheCodeSetLacks)
{
    startFiles("out.fileEncoding=ISO-8859-1\n");

    log((std::string("\xC3\xA9") + hiraganaA + "\xFFz").c_str());

    EXPECT_EQ(content("a.log"), "\xE9??z\n");
}

TEST_F(FileEncoding, holdsForHeaderAndFooterToo)
{
    startFiles("out.fileEncoding=37\nout.formatterName=framed\n");

    log("A");
    set("maxFiles", "2");

    // In this code set "<", "A" and ">" are these bytes, and a line feed is 0x25.
    EXPECT_EQ(content("a.log"), "\x4C\x25\xC1\x25\x6E\x25");
}

TEST_F(FileEncoding, staysUtf8WhereItCannotBeLoaded)
{
    startFiles("out.fileEncoding=SHIFT_JIS\n");

    set("fileEncoding", "no such code set");
    log(hiraganaA);

    EXPECT_EQ(content("a.log"), hiraganaA + std::string("\n"));
    EXPECT_THAT(errorKeys(), ElementsAre(36));
    EXPECT_EQ(records("errors")[0].level, CCG_WARN);
    EXPECT_THAT(texts("errors")[0], HasSubstr("Could not load codeset no such code set."));
}

TEST_F(FileEncoding, isNotReportedIfTheHandlerIsToldSo)
{
    startFiles("out.appending=false\nout.logInternalErrs=true\n");

    set("fileEncoding", "no such code set");

    EXPECT_THAT(errorKeys(), IsEmpty());
}

TEST_F(FileEncoding, mayChangeFromRecordToRecord)
{
    startFiles("out.fileEncoding=ISO-8859-1\n");

    log("\xC3\xA9");
    set("fileEncoding", "UTF8");
    log("\xC3\xA9");
    set("fileEncoding", "INTERNAL37");
    log("\xC3\xA9");

    EXPECT_EQ(content("a.log"), "\xE9\n\xC3\xA9\n\xE9\n");
}
