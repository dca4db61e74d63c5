#include "Foundtn/util/profileOrigin.h"

#include "Foundtn/util/IAppProfileService.h"
#include "Foundtn/util/getEnv.h"
#include "Foundtn/util/globalFlags.h"
#include "platform/os/os.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/freshProcess.h"

namespace {

TEST_IN_FRESH_PROCESS(ProfileOrigin, tellsFileAndLine)
{
    TemporaryFolder const folder;
    folder.write("p.ini", "; top\r\n\r\n[General]\r\nDepth = 7\r\nEmpty=\r\n");
    CString const file(folder.path("p.ini").c_str());
    globalFlags::instance()->setFlag("CommandLine", "-iniFile=" + file);
    IAppProfileService service(false);
    service.InitProfileName(nullptr, nullptr, nullptr);
    SetEnvironmentVariableA("Depth", "8");

    zk::ProfileOrigin const origin = zk::profileOrigin("general", "DEPTH");

    EXPECT_EQ(origin.source, zk::ProfileOrigin::profile);
    EXPECT_EQ(origin.value, "7");
    EXPECT_EQ(origin.file, file);
    EXPECT_EQ(origin.line, 4);
    EXPECT_EQ(zk::profileOrigin("General", "Empty").source, zk::ProfileOrigin::absent);
}

TEST_IN_FRESH_PROCESS(ProfileOrigin, isWhatAnswersWhereValuesAreBlank)
{
    TemporaryFolder const folder;
    folder.write("p.ini", "[General]\nZkBlank=\"  \"\n");
    globalFlags::instance()->setFlag("CommandLine", CString("-iniFile=") + folder.path("p.ini").c_str());
    IAppProfileService service(false);
    service.InitProfileName(nullptr, nullptr, nullptr);
    CString value("before");
    ASSERT_TRUE(service.GetProfileValue("General", "ZkBlank", value, "default")) << "it is there";
    ASSERT_EQ(value, "");

    zk::ProfileOrigin origin = zk::profileOrigin("General", "ZkBlank");
    EXPECT_EQ(origin.source, zk::ProfileOrigin::absent);
    EXPECT_EQ(origin.file, "");
    EXPECT_EQ(origin.line, 0);
    EXPECT_EQ(omGetEnvVar("General", "ZkBlank", value), 0);

    SetEnvironmentVariableA("ZkBlank", " \t");
    EXPECT_EQ(zk::profileOrigin("General", "ZkBlank").source, zk::ProfileOrigin::absent);
    EXPECT_EQ(omGetEnvVar("General", "ZkBlank", value), 0);

    SetEnvironmentVariableA("ZkBlank", "8");
    origin = zk::profileOrigin("General", "ZkBlank");
    EXPECT_EQ(origin.source, zk::ProfileOrigin::environment);
    EXPECT_EQ(origin.value, "8");
    EXPECT_EQ(omGetEnvVar("General", "ZkBlank", value), 1);
    EXPECT_EQ(value, "8");
}

TEST_IN_FRESH_PROCESS(ProfileOrigin, tellsTheLineInAFileInUtf16)
{
    TemporaryFolder const folder;
    std::string content("\xFF\xFE");
    for (char const c : std::string_view("; top\n\n[S]\n\xE9=v\n"))
        content.append({c, '\0'});
    folder.write("p.ini", content);
    char name[8] = {};
    WideCharToMultiByte(CP_ACP, 0, L"\u00E9", -1, name, sizeof name, nullptr, nullptr);
    globalFlags::instance()->setFlag("CommandLine", CString("-iniFile=") + folder.path("p.ini").c_str());
    IAppProfileService service(false);
    service.InitProfileName(nullptr, nullptr, nullptr);

    zk::ProfileOrigin const origin = zk::profileOrigin("S", name);

    EXPECT_EQ(origin.value, "v");
    EXPECT_EQ(origin.line, 4);
}

TEST_IN_FRESH_PROCESS(ProfileOrigin, namesTheProfileThatIsNotThereYet)
{
    EXPECT_EQ(zk::profileFile(), "");
    IAppProfileService const service(false);

    CString const file = zk::profileFile();

    EXPECT_EQ(file.Right(12), "Zentrika.ini");
    EXPECT_GT(file.GetLength(), 12);
}

TEST_IN_FRESH_PROCESS(ProfileOrigin, isTheEnvironmentWithoutAProfile)
{
    SetEnvironmentVariableA("ZK_TEST_ORIGIN", "value");

    zk::ProfileOrigin const origin = zk::profileOrigin("General", "ZK_TEST_ORIGIN");

    EXPECT_EQ(origin.source, zk::ProfileOrigin::environment);
    EXPECT_EQ(origin.value, "value");
    EXPECT_EQ(origin.file, "");
    EXPECT_EQ(origin.line, 0);
}

TEST_IN_FRESH_PROCESS(ProfileOrigin, isAbsentOtherwise)
{
    zk::ProfileOrigin const origin = zk::profileOrigin("General", "ZK_TEST_NO_SUCH_SETTING");

    EXPECT_EQ(origin.source, zk::ProfileOrigin::absent);
    EXPECT_EQ(origin.value, "");
}

}  // namespace
