#include <tavik/xml/XmlDocument.h>

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <clocale>
#include <limits>

using Tavik::XML::XmlDocument;
using Tavik::XML::XmlElement;

namespace {

constexpr int Absent = -77;

std::string printed(const XmlElement& element)
{
    std::string text = "replaced";
    XmlDocument().print(element, text);
    return text;
}

TEST(XmlElement, ReadsAttributes)
{
    const struct
    {
        const char* text;
        double number;
        int integer;
        bool truth;
    } cases[] = {{"0x1F", 31.0, 31, false},
                 {"017", 17.0, 15, false},
                 {" -12 m", -12.0, -12, false},
                 {"48.5e1", 485.0, 48, false},
                 {"+2.5", 2.5, 2, false},
                 {"0xffffffff", 4294967295.0, -1, false},
                 {"1e999", std::numeric_limits<double>::infinity(), 1, false},
                 {"true", 0.0, 0, true},
                 {"True", 0.0, 0, false},
                 {"1", 1.0, 1, false},
                 {"", 0.0, 0, false}};
    for (const auto& c : cases) {
        XmlElement element("e");
        element.setAttributeString("a", c.text);
        EXPECT_EQ(element.getAttributeInt("a", Absent), c.integer) << c.text;
        EXPECT_EQ(element.getAttributeDouble("a", Absent), c.number) << c.text;
        EXPECT_EQ(element.getAttributeBool("a", !c.truth), c.truth) << c.text;
        EXPECT_EQ(element.getAttributeString("a", 100), c.text);
    }
    XmlElement element("e");
    element.setAttributeString("a", "abc");
    EXPECT_EQ(element.getAttributeString("a", 3), "ab");
    EXPECT_EQ(element.getAttributeString("a", 1), "");
    EXPECT_EQ(element.getAttributeString("a", 0), "");
    EXPECT_EQ(element.getAttributeString("b", 9), "");
    EXPECT_EQ(element.getAttributeInt("b", Absent), Absent);
    EXPECT_EQ(element.getAttributeDouble("b", Absent), Absent);
    EXPECT_TRUE(element.getAttributeBool("b", true));
}

// A locale with a decimal comma changes nothing; where it is not installed, the test holds for the C locale alone.
TEST(XmlElement, WritesAttributes)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    XmlElement element("e");
    element.setAttributeInt("i", -5);
    element.setAttributeHex("h", 0x1AB);
    element.setAttributeHex("n", -1);
    element.setAttributeDouble("d", 48.1234567);
    element.setAttributeDouble("x", -1.5e-7);
    element.setAttributeBool("b", true);
    element.setAttributeString("s", "<\"&#x41;\n");
    element.setAttributeInt("i", 6);
    EXPECT_EQ(printed(element), "<e i=\"6\" h=\"0x1ab\" n=\"0xffffffff\" d=\"48.1235\" x=\"-1.5e-07\" b=\"true\" "
                                "s='&lt;&quot;&amp;#x41;&#x0A;' />\n");
    EXPECT_EQ(element.getAttributeDouble("d", 0.0), 48.1235);
    std::setlocale(LC_ALL, before.c_str());
}

TEST(XmlElement, InvalidIsHarmless)
{
    XmlElement invalid;
    XmlElement element("e");
    invalid.setAttributeString("a", "b");
    EXPECT_FALSE(invalid.valid());
    EXPECT_FALSE(invalid.appendElement(element));
    EXPECT_FALSE(element.appendElement(invalid));
    EXPECT_FALSE(XmlDocument().appendElement(invalid));
    EXPECT_FALSE(invalid.firstElement().valid() || invalid.nextElement().valid() || XmlDocument().root().valid());
    EXPECT_EQ(invalid.name() + invalid.value() + invalid.getAttributeString("a", 9) + printed(invalid), "");
    EXPECT_EQ(invalid.data(), nullptr);
    EXPECT_FALSE(XmlElement(nullptr).valid());
}

TEST(XmlElement, NestsOnceAndNeverInItself)
{
    XmlDocument first;
    XmlDocument second;
    XmlElement a("a");
    XmlElement b("b");
    XmlElement c("c");
    EXPECT_FALSE(a.appendElement(a));
    EXPECT_TRUE(a.appendElement(b));
    EXPECT_TRUE(b.appendElement(c));
    EXPECT_FALSE(a.appendElement(b)) << "twice";
    EXPECT_FALSE(c.appendElement(a)) << "into its own descendant";
    EXPECT_TRUE(first.appendElement(a));
    EXPECT_FALSE(second.appendElement(a)) << "of another document";
    EXPECT_FALSE(second.appendElement(c));
    EXPECT_TRUE(a.appendElement(XmlElement("d")));
    EXPECT_EQ(printed(first.root()), "<a>\n    <b>\n        <c />\n    </b>\n    <d />\n</a>\n");
    EXPECT_EQ(a.firstElement().nextElement().name(), "d");
    EXPECT_FALSE(a.firstElement().nextElement().nextElement().valid());
}

// The address sanitizer sees what is freed twice, too early or never.
TEST(XmlElement, LivesAsLongAsAWrapper)
{
    XmlElement inner("inner");
    XmlElement sibling;
    {
        XmlDocument document;
        XmlElement outer("outer");
        outer.appendElement(inner);
        outer.appendElement(XmlElement("sibling"));
        document.appendElement(outer);
        sibling = document.root().firstElement().nextElement();
        const XmlElement fromPointer(sibling.data());
        sibling = fromPointer;
    }
    inner.setAttributeInt("a", 1);
    EXPECT_TRUE(inner.appendElement(XmlElement("late")));
    EXPECT_EQ(inner.firstElement().name() + inner.nextElement().name() + sibling.name(), "latesiblingsibling");

    XmlElement alone("alone");
    alone = XmlElement(alone.data());
    EXPECT_EQ(alone.name(), "alone");
}

TEST(XmlElement, ForeignElementsBelongToTheirOwner)
{
    TiXmlElement foreign("foreign");
    EXPECT_TRUE(XmlElement(&foreign).appendElement(XmlElement("ours")));
    EXPECT_EQ(XmlElement(foreign.FirstChildElement()).name(), "ours");

    XmlElement given(new TiXmlElement("given"));
    XmlElement copy;
    copy = given;
    {
        XmlDocument document;
        EXPECT_TRUE(document.appendElement(given));
        EXPECT_EQ(document.root().name(), "given");
    }
    EXPECT_EQ(copy.name(), "given");
    EXPECT_FALSE(XmlElement("e").appendElement(copy));
}

// A tree that deep could not be printed or freed by TinyXML on a usual stack.
TEST(XmlElement, NestsAThousandDeep)
{
    XmlElement top("e");
    XmlElement down = top;
    int levels = 1;
    for (XmlElement next("e"); levels < 100000 && down.appendElement(next); next = XmlElement("e")) {
        down = next;
        ++levels;
    }
    EXPECT_EQ(levels, 1000);
    for (levels = 1; levels < 100000; ++levels) { // from the inside out
        XmlElement outer("e");
        if (!outer.appendElement(top)) {
            break;
        }
        top = outer;
    }
    EXPECT_EQ(levels, 1);
    EXPECT_TRUE(XmlDocument().appendElement(top));
}

} // namespace
