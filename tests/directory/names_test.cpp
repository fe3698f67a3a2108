// How DNs, paths and full names are taken apart and put together.
#include "directory/names.h"

#include <gtest/gtest.h>

#include "directory/schema.h"

namespace zorvel::test {
namespace {

// The components of a DN as "type:name", leaf first, or "no DN".
std::string Parsed(std::string_view dn) {
    std::vector<NamingComponent> components;
    if (!ParseDN(dn, components)) return "no DN";
    std::string text;
    for (const NamingComponent& component : components)
        text += component.type + ":" + component.name + " ";
    return text;
}

TEST(Names, ResolveTheEscapesOfDns) {
    using Case = std::pair<std::string_view, std::string_view>;
    for (const auto& [dn, expected] :
         {Case{"", ""}, Case{"cn=Word,ou=APPS,o=SITE", "cn:Word ou:APPS o:SITE "},
          Case{"cn=Word , ou = APPS, o=SITE", "cn:Word ou:APPS o:SITE "},
          Case{"2.5.4.3=Word,o=S", "2.5.4.3:Word o:S "}, Case{R"(cn=Acme\, Inc.,o=S)", "cn:Acme, Inc. o:S "},
          Case{R"(cn=A\2CB\5CC,o=S)", R"(cn:A,B\C o:S )"}, Case{R"(cn=\20x\20,o=S)", "cn: x  o:S "},
          Case{"cn=a+ou=b,o=S", "cn:a+b o:S "}, Case{R"(cn="a,b",o=S)", "no DN"},
          Case{"cn=Caf\xC3\xA9,o=S", "cn:Caf\xE9 o:S "}, Case{R"(cn=Caf\C3\A9,o=S)", "cn:Caf\xE9 o:S "},
          Case{"cn=a,", "no DN"}, Case{",o=S", "no DN"}, Case{"cn=,o=S", "no DN"}, Case{"=a,o=S", "no DN"},
          Case{"[Public]", "no DN"}, Case{R"(cn=a\)", "no DN"}, Case{R"(cn=a\00b,o=S)", "no DN"},
          Case{std::string_view("cn=a\0b,o=S", 10), "no DN"}})
        EXPECT_EQ(Parsed(dn), expected) << dn;
}

TEST(Names, ADnOfAHundredThousandComponentsIsParsed) {
    std::string dn = R"(cn=\41)";
    for (int depth = 0; depth < 100000; ++depth)
        dn += ",ou=x";
    std::vector<NamingComponent> components;
    ASSERT_TRUE(ParseDN(dn, components));
    EXPECT_EQ(components.size(), 100001U);
}

TEST(Names, FullNamesEscapeDotsAndNothingElse) {
    std::string full_name;
    for (const char* component : {"Reader 7.0", R"(A\B)", "SI,TE"})
        AppendToFullName(full_name, component);
    EXPECT_EQ(full_name, R"(Reader 7\.0.A\B.SI,TE)");
    EXPECT_EQ(SplitFullName(full_name), (std::vector<std::string>{"Reader 7.0", R"(A\B)", "SI,TE"}));
    EXPECT_EQ(SplitFullName(".Word.SITE"), (std::vector<std::string>{"Word", "SITE"}));
}

// The schema of definitions, as "NDS name/syntax" for each of `names`.
std::string Found(std::initializer_list<const char*> definitions, std::initializer_list<const char*> names) {
    Schema schema;
    for (const char* definition : definitions) {
        std::string fault = schema.AddAttributeType(definition);
        if (!fault.empty()) return fault;
    }
    schema.ResolveSyntaxes();
    std::string found;
    for (const char* name : names) {
        const Schema::Attribute* const attribute = schema.FindAttribute(name);
        found += attribute == nullptr
                     ? "- "
                     : attribute->nds_name + "/" + std::string(SyntaxName(attribute->syntax)) + " ";
    }
    return found;
}

TEST(Schema, KnowsAttributesByEveryNameInAnyCase) {
    EXPECT_EQ(Found({"( 2.5.4.3 NAME ( 'cn' 'commonName' ) SYNTAX 1.3.6.1.4.1.1466.115.121.1.15{64} "
                     "X-NDS_NAME 'CN' )"},
                    {"cn", "COMMONNAME", "2.5.4.3", "sn"}),
              "CN/String CN/String CN/String - ");
    EXPECT_EQ(Found({"( 1.2.3 NAME 'plain' SYNTAX '1.3.6.1.4.1.1466.115.121.1.27' )"}, {"Plain"}),
              "plain/Long ");
}

TEST(Schema, InheritsSyntaxesAndSurvivesCircles) {
    EXPECT_EQ(Found({"( 1.1 NAME 'a' SUP b )", "( 1.2 NAME 'b' SUP 1.3 )",
                     "( 1.3 NAME 'c' SYNTAX 1.3.6.1.4.1.1466.115.121.1.40 )", "( 1.4 NAME 'x' SUP y )",
                     "( 1.5 NAME 'y' SUP x )", "( 1.6 NAME 'z' SUP unknown )", "( 1.7 NAME 'n' )"},
                    {"a", "b", "c", "x", "y", "z", "n"}),
              "a/NWOctetString b/NWOctetString c/NWOctetString x/Other y/Other z/String n/Other ");
}

TEST(Schema, NamesTheSyntaxOfEachOid) {
    const std::pair<std::string, std::string> cases[] = {
        {"1.3.6.1.4.1.1466.115.121.1.27", "Long"},   {"2.16.840.1.113719.1.1.5.1.22", "Long"},
        {"1.3.6.1.4.1.1466.115.121.1.11", "String"}, {"1.3.6.1.4.1.1466.115.121.1.15", "String"},
        {"1.3.6.1.4.1.1466.115.121.1.24", "String"}, {"1.3.6.1.4.1.1466.115.121.1.26", "String"},
        {"1.3.6.1.4.1.1466.115.121.1.36", "String"}, {"1.3.6.1.4.1.1466.115.121.1.38", "String"},
        {"1.3.6.1.4.1.1466.115.121.1.41", "String"}, {"1.3.6.1.4.1.1466.115.121.1.44", "String"},
        {"1.3.6.1.4.1.1466.115.121.1.50", "String"}, {"1.3.6.1.4.1.1466.115.121.1.12", "String"},
        {"2.16.840.1.113719.1.1.5.1.15", "NWPath"},  {"1.3.6.1.4.1.1466.115.121.1.40", "NWOctetString"},
        {"2.16.840.1.113719.1.1.5.1.17", "NWACL"},   {"1.3.6.1.4.1.1466.115.121.1.5", "NWStream"},
        {"1.3.6.1.4.1.1466.115.121.1.7", "Other"},   {"2.16.840.1.113719.1.1.5.1.25", "Other"},
    };
    for (const auto& [oid, name] : cases) {
        EXPECT_EQ(Found({("( 1.2 NAME 'a' SYNTAX " + oid + " )").c_str()}, {"a"}), "a/" + name + " ") << oid;
    }
}

TEST(Schema, RefusesWhatIsNoDefinition) {
    EXPECT_EQ(Found({"( 1.2 NAME 'a'"}, {}).substr(0, 22), "Not an attribute type:");
    EXPECT_EQ(Found({""}, {}).substr(0, 22), "Not an attribute type:");
    EXPECT_EQ(Found({"( 1.2 NAME 'a' SYNTAX 1.3.6.1{"}, {}).substr(0, 22), "Not an attribute type:");
    EXPECT_EQ(Schema().AddAttributeType(std::string(1 << 20, '(')), "Not an attribute type: too long");
    EXPECT_EQ(Schema().AddObjectClass("nonsense").substr(0, 20), "Not an object class:");
}

}  // namespace
}  // namespace zorvel::test
