// The script type `Object`: what is declared, and all of it at work in one script.
#include "object/script/object_binding.h"

#include <fstream>
#include <sstream>

#include "korvantide/script_object.h"
#include "object/script/object_editor.h"
#include "support/script_fixture.h"
#include "support/tree.h"

namespace korvant::test {
namespace {

const char* const kDeclarations[] = {
    "void setLocale( int &in )",
    "int getLocale()",
    "void addTranslation( int &in, string &in, string &in )",
    "void addErrorConstraint( string &in, string &in, string &in )",
    "void addEnableConstraint( string &in, string &in )",
    "void addWarningConstraint( string &in, string &in, string &in )",
    "void addHint( string &in, string &in )",
    "void addComputation( string &in, string &in )",
    "int VAL( string &in )",
    "int messageBox( string &in, string &in, string &in, string &in )",
    "int messageBox( string &in, string &in, string &in, string &in, string &in )",
    "int prompt( string &in, int &in )",
    "double prompt( string &in, double &in )",
    "string@ prompt( string &in, string &in )",
    "void clear()",
    "bool edit()",
    "void setTitle( string &in )",
    "string@ getTitle()",
    "void addClass( string &in, bool &in )",
    "void addGroup( string &in, const Object &in, bool &in, bool &in, bool &in, bool &in )",
    "void addCategory( string &in )",
    "bool append( const Object &in )",
    "bool addGroupElement( const Object &in )",
    "int getGroupElement( string &in )",
    "void setGroupElement( string &in, int &in )",
    "void addOption( string &in )",
    "bool addOptionProperty( string &in, string &in, int &in, bool &in )",
    "bool addProperty( string &in, string &in, string &in, bool &in )",
    "bool addProperty( string &in, string &in, string &in, string &in, bool &in, bool &in )",
    "bool addProperty( string &in, string &in, int &in, string &in, bool &in )",
    "bool addProperty( string &in, string &in, double &in, string &in, bool &in )",
    "bool addProperty( string &in, string &in, float &in, string &in, bool &in )",
    "bool addProperty( string &in, string &in, bool &in, bool &in )",
    "bool addProperty( string &in, string &in, bool &in, bool &in, int &in )",
    "int getPropertiesCount()",
    "void getPropertyName( int &in, string &out )",
    "int getPropertyType( int &in )",
    "int getPropertyTypeByName( string &in )",
    "void resetIterators()",
    "bool getNextClass( string &out, bool &out )",
    "bool getNextCategory( string &out )",
    "bool getNextProperty( string &out, int &out )",
    "bool getProperty( string &in, string &out )",
    "bool getProperty( string &in, int &out )",
    "bool getProperty( string &in, double &out )",
    "bool getProperty( string &in, float &out )",
    "bool getProperty( string &in, bool &out )",
    "bool setProperty( string &in, string &in )",
    "bool setProperty( string &in, int &in )",
    "bool setProperty( string &in, double &in )",
    "bool setProperty( string &in, float &in )",
    "bool setProperty( string &in, bool &in )",
};

TEST(ObjectRows, AreTheMethodsInTheirOrderAndExplained) {
    const auto rows = objectMethodRows();
    ASSERT_EQ(rows.size(), std::size(kDeclarations));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_STREQ(rows[i].declaration, kDeclarations[i]);
        EXPECT_STRNE(rows[i].help, "") << rows[i].declaration;
        EXPECT_STRNE(rows[i].example, "") << rows[i].declaration;
    }
}

/// Confirms every form, after entering what a test gives it.
class ConfirmingEditor : public ObjectEditor {
  public:
    ConfirmingEditor() : before_(setObjectEditor(this)) {}
    ~ConfirmingEditor() override { setObjectEditor(before_); }
    bool run(EditSession&) override {
        ++runs;
        return true;
    }
    int runs = 0;

  private:
    ObjectEditor* before_;
};

class ObjectInScripts : public ScriptInBothConventions {
  protected:
    ~ObjectInScripts() override { ScriptObject::m_locale = 0; }
};
INSTANTIATE_TEST_SUITE_P(Conventions, ObjectInScripts, ::testing::Bool(), conventionName);

std::string fileText(const std::string& name) {
    std::ifstream file(korvant::test::sourceFolder() + "/tests/object/script/" + name,
                       std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

TEST_P(ObjectInScripts, TheEngineHoldsTheMethodsInTheirOrder) {
    const asITypeInfo* type = engine()->GetTypeInfoByName("Object");
    ASSERT_NE(type, nullptr);
    EXPECT_EQ(type->GetFactoryCount(), 2U);
    EXPECT_EQ(type->GetSize(), sizeof(ScriptObject));
    ASSERT_EQ(type->GetMethodCount(), std::size(kDeclarations));
    // The engine words declarations in its own way; names and numbers of parameters do.
    for (asUINT i = 0; i < type->GetMethodCount(); ++i) {
        const asIScriptFunction* method = type->GetMethodByIndex(i);
        const std::string declared = kDeclarations[i];
        EXPECT_NE(declared.find(std::string(method->GetName()) + "("), std::string::npos)
            << declared << " / " << method->GetDeclaration();
    }
}

TEST_P(ObjectInScripts, AllMethodsInOneScript) {
    const ConfirmingEditor editor;
    frontend.answers = {box_button::kYes, box_button::kOk};
    frontend.number = 7.0;
    frontend.text = "typed";
    console.output.clear();
    ASSERT_TRUE(run(fileText("all_methods.as"))) << messages() << session().lastFailure().text;
    EXPECT_EQ(console.output, fileText("all_methods.txt"));
    EXPECT_EQ(editor.runs, 1);
    ASSERT_EQ(frontend.boxes.size(), 2U);
    EXPECT_EQ(frontend.boxes[0].text, "Enregistrer ?");
    EXPECT_EQ(frontend.boxes[1].details, "all of it");
}

}  // namespace
}  // namespace korvant::test
