// What the phone's installer is told to do, read from the cabinet itself.
#include <gmock/gmock.h>

#include "tests/device/disassembly.h"
#include "tests/device/own_folder.h"

namespace {

using ::testing::ElementsAre;
using Lines = std::vector<std::string>;

class Setup : public ::testing::Test {
  protected:
    device::CFolder folder;

    void SetUp() override {
        ASSERT_THAT(device::OutputOf("gcab -x -C '" + folder.Path() + "' '" KORA_DEVICE_BUILD "/Kora.cab'"),
                    ElementsAre());
    }

    // The value of an expression of XPath in the definition.
    std::string Value(const std::string& expression) const {
        const Lines lines =
            device::OutputOf("xmllint --xpath \"" + expression + "\" '" + folder.Path("_setup.xml") + "'");
        std::string value;
        for (const std::string& line : lines) value += (value.empty() ? "" : "\n") + line;
        return value;
    }
    std::string Parameter(const std::string& name) const {
        return Value("string(" + kInstall + "/parm[@name='" + name + "']/@value)");
    }

    const std::string kRoot = "/wap-provisioningdoc/characteristic";
    const std::string kInstall = kRoot + "[@type='Install']";
    const std::string kFiles = kRoot + "[@type='FileOperation']";
    const std::string kRegistry = kRoot + "[@type='Registry']";
};

TEST_F(Setup, TellsTheInstallerOfFilesAndRegistryAndNothingElse) {
    EXPECT_EQ(Value("count(" + kRoot + ")"), "3");
    for (const std::string& part : {kInstall, kFiles, kRegistry})
        EXPECT_EQ(Value("count(" + part + ")"), "1") << part;
    EXPECT_EQ(Parameter("InstallPhase"), "install");
    EXPECT_EQ(Parameter("AppName"), "Quillon Kora");
}

TEST_F(Setup, AsksForTheSystemThatTheProgramIsFor) {
    EXPECT_EQ(Parameter("OSVersionMin"), "5.2");
    EXPECT_EQ(Parameter("OSVersionMax"), "5.99");
}

// A booking starts "\Windows\UI.exe"; %CE2% is that folder on every phone.
TEST_F(Setup, LaysTheProgramWhereBookingsStartIt) {
    EXPECT_EQ(Parameter("InstallDir"), "%CE2%");
    const std::string program = kFiles + "/characteristic[@type='%CE2%']/characteristic[@type='UI.exe']";
    EXPECT_EQ(Value("string(" + program + "/@translation)"), "install");
    EXPECT_EQ(Value("string(" + program + "/characteristic[@type='Extract']/parm[@name='Source']/@value)"),
              "UI.exe");
    EXPECT_EQ(Value("count(" + kFiles + "//characteristic[@type='Extract'])"), "1");
    EXPECT_EQ(device::OutputOf("cmp '" + folder.Path("UI.exe") + "' '" KORA_DEVICE_PROGRAM "'"), Lines());
}

TEST_F(Setup, MakesAShortcutToItAmongThePrograms) {
    const std::string shortcut = kFiles + "/characteristic[@type='%CE11%']/characteristic[@type='Kora.lnk']";
    EXPECT_EQ(Value("string(" + shortcut + "/characteristic[@type='Shortcut']/parm[@name='Source']/@value)"),
              "%CE2%\\UI.exe");
    EXPECT_EQ(Value("count(" + kFiles + "//characteristic[@type='Shortcut'])"), "1");
}

// The installer takes away again what it has written: never a key that others write to, as the tuner's own.
TEST_F(Setup, WritesToTheRadiosOwnRegistryKeyAlone) {
    EXPECT_EQ(Value("string(" + kRegistry + "/characteristic/@type)"), "HKCU\\Software\\Quillon\\Kora");
    EXPECT_EQ(Value("string(" + kRegistry + "/characteristic/parm/@name)"), "Installed");
    EXPECT_EQ(Value("string(" + kRegistry + "/characteristic/parm/@datatype)"), "integer");
}

TEST_F(Setup, CountsWhatThereIsToDoAsItIs) {
    EXPECT_EQ(Parameter("NumDirs"), Value("count(" + kFiles + "//characteristic[@type='MakeDir'])"));
    EXPECT_EQ(Parameter("NumFiles"), Value("count(" + kFiles + "//characteristic[@type='Extract'])"));
    EXPECT_EQ(Parameter("NumShortcuts"), Value("count(" + kFiles + "//characteristic[@type='Shortcut'])"));
    EXPECT_EQ(Parameter("NumRegKeys"), Value("count(" + kRegistry + "/characteristic)"));
    EXPECT_EQ(Parameter("NumRegVals"), Value("count(" + kRegistry + "/characteristic/parm)"));
}

}  // namespace
