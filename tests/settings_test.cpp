#include "machine.h"

#include <gtest/gtest.h>

namespace {

TEST(Settings, HaveATypeAndAKey)
{
    Machine machine;
    machine.write_setting("Software\\Log", "Text", "C:\\\\a \"b\"\\Z\u00fcrich \U0001F600.txt");
    machine.write_setting("Software\\Log", "Z\u00fcrich", std::string(2000, 'x'));
    machine.write_setting("Software\\Log", "On", 0x80000000u);
    machine.write_setting("Software\\Log", "Off", 0u);
    EXPECT_EQ(read_setting("tEXT", "sOFTWARE\\lOG"), "C:\\\\a \"b\"\\Z\u00fcrich \U0001F600.txt");
    EXPECT_EQ(read_setting(std::u16string(u"Z\u00fcrich")), std::string(2000, 'x'));
    EXPECT_EQ(read_setting("On"), "true");
    EXPECT_EQ(read_setting("Off"), "false");
    EXPECT_EQ(read_setting(std::u16string(u"On\0x", 4)), "none");
    EXPECT_EQ(read_setting("On", "Software"), "none");
    EXPECT_EQ(read_setting("On", "Software\\Log", RegistryWrapper::RootKey(2)), "none");
}

}
