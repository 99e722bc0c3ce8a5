// The methods of the script type `Object`, in order of registration.
#include "host/engine/script_string.h"
#include "object/script/object_access.h"
#include "object/script/object_binding.h"
#include "object/script/object_calls.h"

namespace korvant {

namespace {

// What the engine hands over for an output holds whatever was there before, so that these write a
// value also where there is none to be had.

bool nextClass(ScriptObject* self, std::string& name, bool& value) {
    name.clear();
    value = false;
    return self->_getNextClass(name, value);
}

bool nextCategory(ScriptObject* self, std::string& name) {
    name.clear();
    return self->_getNextCategory(name);
}

bool nextProperty(ScriptObject* self, std::string& name, std::int32_t& index) {
    name.clear();
    index = 0;
    return self->_getNextProperty(name, index);
}

/// The output may lie on the engine's stack, which is aligned to four bytes only.
template <class Value, bool (ScriptObject::*Get)(std::string&, Value&)>
__attribute__((no_sanitize("alignment"))) bool getProperty(ScriptObject* self, std::string& name,
                                                           Value& value) {
    value = Value();
    return (self->*Get)(name, value);
}

// Results that the engine takes over need a reference of their own.

ScriptString* getTitle(ScriptObject* self) {
    return ObjectAccess::title(*self);
}

ScriptString* promptString(ScriptObject* self, std::string& label, const std::string& value) {
    return ObjectAccess::promptString(*self, label, value);
}

/// Deliberate: scripts are promised a result although the operation has none.
bool addGroupElement(ScriptObject* self, ScriptObject& element) {
    self->addGroupElement(element);
    return true;
}

// Through the table of virtual functions, so that a host's own class is reached.

void clear(ScriptObject* self) {
    self->clear();
}
bool edit(ScriptObject* self) {
    return self->edit();
}
bool append(ScriptObject* self, ScriptObject& other) {
    return self->append(other);
}
std::int32_t getPropertiesCount(ScriptObject* self) {
    return self->getPropertiesCount();
}

constexpr char kTaken[] = "Returns false, and changes nothing, when the name is taken.";
constexpr char kUnknown[] = "Returns false when there is no property of that name.";
constexpr char kIgnored[] = "Does nothing when there is no property of that name.";
constexpr char kInitial[] = "Returns the offered value when the dialog is closed without OK.";
constexpr char kMemory[] = "\"Out of memory\"; the object stays as it was.";

const FunctionRow kMethods[] = {
    objectRow<&ScriptObject::_setLocale>("void setLocale( int &in )",
                                         "Sets the language of forms, boxes and prompts for all "
                                         "objects: 0 English, 1 French, 2 Spanish.",
                                         "form.setLocale(1);"),
    objectRow<&ScriptObject::getLocale>("int getLocale()",
                                        "Returns the language: 0 English, 1 French, 2 Spanish.",
                                        "if (form.getLocale() == 1) Print(\"Bonjour\\n\");"),
    objectRow<&ScriptObject::_addTranslation>(
        "void addTranslation( int &in, string &in, string &in )",
        "Adds the translation of a text: language, text, translation. It holds for labels, "
        "categories, classes, options, units, hints, messages and the texts of boxes and prompts.",
        "form.addTranslation(1, \"Depth\", \"Profondeur\");",
        "Languages outside 1 to 1000 are ignored."),
    objectRow<&ScriptObject::_addErrorConstraint>(
        "void addErrorConstraint( string &in, string &in, string &in )",
        "Adds an error: property, condition that must hold, message shown when it does not. OK is "
        "refused while an error stands.",
        "form.addErrorConstraint(\"flow\", \"flow>0\", \"The flow must be positive\");", kIgnored),
    objectRow<&ScriptObject::_addEnableConstraint>(
        "void addEnableConstraint( string &in, string &in )",
        "Adds a condition under which the user may edit a property; with several all must hold.",
        "form.addEnableConstraint(\"power\", \"automatic=0\");", kIgnored),
    objectRow<&ScriptObject::_addWarningConstraint>(
        "void addWarningConstraint( string &in, string &in, string &in )",
        "Adds a warning: property, condition that should hold, message shown when it does not. OK "
        "passes over warnings.",
        "form.addWarningConstraint(\"depth\", \"depth<=500\", \"Unusually deep\");", kIgnored),
    objectRow<&ScriptObject::_addHint>(
        "void addHint( string &in, string &in )",
        "Sets the text that explains a property below the form.",
        "form.addHint(\"flow\", \"Measured at the outlet\");",
        "An unknown name becomes another name of the first property, which gets the hint."),
    objectRow<&ScriptObject::_addComputation>(
        "void addComputation( string &in, string &in )",
        "Sets the expression that computes a property from others; a later one replaces it.",
        "form.addComputation(\"area\", \"width*height\");", kIgnored),
    objectRow<&ScriptObject::VAL>(
        "int VAL( string &in )", "Returns the value of a BU_, IC_ or ID_ constant by its name.",
        "if (answer == form.VAL(\"ID_YES\")) Print(\"yes\\n\");", "Returns 0 for any other text."),
    objectRow<&ScriptObject::_messageBoxStr>(
        "int messageBox( string &in, string &in, string &in, string &in )",
        "Shows a message box: caption, text, buttons (a BU_ name), icon (an IC_ name). Returns an "
        "ID_ value.",
        "int answer = form.messageBox(\"Save\", \"Save the file?\", \"BU_YES_NO\", "
        "\"IC_QUESTION\");",
        "Returns ID_CANCEL when the box is closed without a button."),
    objectRow<&ScriptObject::_messageBoxStrEx>(
        "int messageBox( string &in, string &in, string &in, string &in, string &in )",
        "The same with details behind a button of their own.",
        "form.messageBox(\"Import\", \"3 lines failed\", \"BU_OK\", \"IC_WARNING\", details);",
        "Returns ID_CANCEL when the box is closed without a button."),
    objectRow<&ScriptObject::_promptInteger>(
        "int prompt( string &in, int &in )",
        "Asks for an integer; the second argument is offered as the answer.",
        "int holes = form.prompt(\"Number of holes\", 12);", kInitial),
    objectRow<&ScriptObject::_promptDouble>(
        "double prompt( string &in, double &in )",
        "Asks for a number; the second argument is offered as the answer.",
        "double depth = form.prompt(\"Depth\", 120.0);", kInitial),
    firstRow<promptString>("string@ prompt( string &in, string &in )",
                           "Asks for a text; the second argument is offered as the answer. The "
                           "next call overwrites the result: assign it to a string first.",
                           "string name = form.prompt(\"Name\", \"DH-1\");",
                           "Returns the offered text when the dialog is closed without OK."),
    firstRow<clear>(
        "void clear()",
        "Removes properties, categories, classes, groups, rules, translations and the title.",
        "form.clear();"),
    firstRow<edit>(
        "bool edit()",
        "Shows the object to the user for editing. Returns true when the user confirmed; only then "
        "values have changed.",
        "if (form.edit()) Print(\"OK\\n\");",
        "Returns false when the form was closed otherwise, and where there is no window."),
    objectRow<&ScriptObject::_setTitle>("void setTitle( string &in )",
                                        "Sets the title of the form.", "form.setTitle(\"Pump\");",
                                        kMemory),
    firstRow<getTitle>("string@ getTitle()",
                       "Returns the title of the form, as a handle to the object's own text: "
                       "setTitle() changes it. Assign it to a string to keep it.",
                       "string title = form.getTitle();"),
    objectRow<&ScriptObject::_addClass>(
        "void addClass( string &in, bool &in )",
        "Begins a class: the properties that follow stand on a page of their own. The second "
        "argument lets the user edit them.",
        "form.addClass(\"Geometry\", true);", "Does nothing when there is a class of that name."),
    objectRow<&ScriptObject::_addGroup>(
        "void addGroup( string &in, const Object &in, bool &in, bool &in, bool &in, bool &in )",
        "Begins a group of repeated elements: name, layout of an element, and whether the user may "
        "add, copy, remove and reorder elements. The properties of the layout join this object.",
        "form.addGroup(\"Intervals\", interval, true, true, true, true);",
        "For a name that is declared it only makes addGroupElement add to that group. \"Groups are "
        "nested too deep\" beyond 64 levels."),
    objectRow<&ScriptObject::_addCategory>(
        "void addCategory( string &in )",
        "Begins a category: a heading above the properties that follow.",
        "form.addCategory(\"Dimensions\");", kMemory),
    firstRow<append>("bool append( const Object &in )",
                     "Merges the classes, categories, properties, rules, groups and translations "
                     "of another object into this one.",
                     "form.append(other);",
                     "A property whose name is taken stays as it is. \"Out of memory\"; the object "
                     "stays as it was."),
    firstRow<addGroupElement>(
        "bool addGroupElement( const Object &in )",
        "Adds a copy of an object as an element of the group that addGroup named last.",
        "form.addGroupElement(interval);",
        "The result is always true. \"Out of memory\"; the object stays as it was."),
    objectRow<&ScriptObject::_getGroupElement>(
        "int getGroupElement( string &in )",
        "Returns the index of a group's current element, -1 for none.",
        "int current = form.getGroupElement(\"Intervals\");", "Returns 0 for an unknown group."),
    objectRow<&ScriptObject::_setGroupElement>("void setGroupElement( string &in, int &in )",
                                               "Sets the index of a group's current element.",
                                               "form.setGroupElement(\"Intervals\", 0);"),
    objectRow<&ScriptObject::_addOption>("void addOption( string &in )",
                                         "Adds an option for the next integer property.",
                                         "form.addOption(\"Centrifugal\");", kMemory),
    objectRow<&ScriptObject::_addLongOptionProperty>(
        "bool addOptionProperty( string &in, string &in, int &in, bool &in )",
        "Adds a property with the options added so far: name, label, index of the chosen one, and "
        "whether it may be edited.",
        "form.addOptionProperty(\"kind\", \"Kind of pump\", 0, true);", kTaken),
    objectRow<&ScriptObject::_addStringProperty>(
        "bool addProperty( string &in, string &in, string &in, bool &in )",
        "Adds a text: name, label, value, and whether it may be edited.",
        "form.addProperty(\"site\", \"Site\", \"North pit\", true);", kTaken),
    objectRow<&ScriptObject::_addStringFileProperty>(
        "bool addProperty( string &in, string &in, string &in, string &in, bool &in, bool &in )",
        "Adds a file: name, label, file, filter, true for a file to open and false for one to "
        "save, and whether it may be edited.",
        "form.addProperty(\"log\", \"Log file\", \"\", \"Text files|*.txt\", true, true);", kTaken),
    objectRow<&ScriptObject::_addLongProperty>(
        "bool addProperty( string &in, string &in, int &in, string &in, bool &in )",
        "Adds an integer: name, label, value, unit, and whether it may be edited. The unit 'color' "
        "makes it a colour 0x00BBGGRR; with options added before it becomes an option property.",
        "form.addProperty(\"stages\", \"Stages\", 2, \"\", true);", kTaken),
    objectRow<&ScriptObject::_addDoubleProperty>(
        "bool addProperty( string &in, string &in, double &in, string &in, bool &in )",
        "Adds a number: name, label, value, unit, and whether it may be edited.",
        "form.addProperty(\"flow\", \"Flow\", 12.5, \"m3/h\", true);", kTaken),
    objectRow<&ScriptObject::_addFloatProperty>(
        "bool addProperty( string &in, string &in, float &in, string &in, bool &in )",
        "The same for a single-precision number, which is kept in double precision.",
        "form.addProperty(\"grade\", \"Grade\", 0.5f, \"g/t\", true);", kTaken),
    objectRow<&ScriptObject::_addBoolProperty>(
        "bool addProperty( string &in, string &in, bool &in, bool &in )",
        "Adds a boolean: name, label, value, and whether it may be edited.",
        "form.addProperty(\"automatic\", \"Automatic\", true, true);", kTaken),
    objectRow<&ScriptObject::_addBoolRadioProperty>(
        "bool addProperty( string &in, string &in, bool &in, bool &in, int &in )",
        "Adds a boolean of a radio group: the user can set one of those that share a number of 0 "
        "or above.",
        "form.addProperty(\"metric\", \"Metric\", true, true, 1);", kTaken),
    firstRow<getPropertiesCount>("int getPropertiesCount()", "Returns the number of properties.",
                                 "for (int i = 0; i < form.getPropertiesCount(); i++)\n    "
                                 "Print(\"\" + form.getPropertyType(i) + \"\\n\");"),
    objectRow<&ScriptObject::_getPropertyName>("void getPropertyName( int &in, string &out )",
                                               "Writes the name of a property, by index from 0.",
                                               "string name; form.getPropertyName(0, name);",
                                               "Writes an empty text for an index out of range."),
    objectRow<&ScriptObject::_getPropertyType>(
        "int getPropertyType( int &in )",
        "Returns the type of a property, by index: 0 integer, colour or option, 1 number, 2 "
        "boolean, 3 text or file.",
        "if (form.getPropertyType(0) == 1) Print(\"a real number\\n\");",
        "Returns -1 for an index out of range."),
    objectRow<&ScriptObject::_getPropertyTypeByName>(
        "int getPropertyTypeByName( string &in )", "The same by name.",
        "int type = form.getPropertyTypeByName(\"flow\");", "Returns -1 for an unknown name."),
    objectRow<&ScriptObject::resetIterators>(
        "void resetIterators()",
        "Begins a walk through classes, their categories and their properties.",
        "form.resetIterators();"),
    firstRow<nextClass>("bool getNextClass( string &out, bool &out )",
                        "Goes on to the next class: its name, and whether it may be edited. "
                        "Classes of groups are passed over.",
                        "while (form.getNextClass(name, value)) Print(name + \"\\n\");",
                        "Returns false after the last."),
    firstRow<nextCategory>("bool getNextCategory( string &out )",
                           "Goes on to the next category of the class.",
                           "while (form.getNextCategory(category)) Print(category + \"\\n\");",
                           "Returns false after the last."),
    firstRow<nextProperty>("bool getNextProperty( string &out, int &out )",
                           "Goes on to the next property of the category: its name and index.",
                           "while (form.getNextProperty(name, index)) Print(name + \"\\n\");",
                           "Returns false after the last."),
    firstRow<getProperty<std::string, &ScriptObject::_getStringProperty>>(
        "bool getProperty( string &in, string &out )", "Reads a text or a file name.",
        "string site; form.getProperty(\"site\", site);", kUnknown),
    firstRow<getProperty<std::int32_t, &ScriptObject::_getLongProperty>>(
        "bool getProperty( string &in, int &out )",
        "Reads an integer, a colour or the index of an option.",
        "int stages; form.getProperty(\"stages\", stages);", kUnknown),
    firstRow<getProperty<double, &ScriptObject::_getDoubleProperty>>(
        "bool getProperty( string &in, double &out )", "Reads a number.",
        "double flow; form.getProperty(\"flow\", flow);", kUnknown),
    firstRow<getProperty<float, &ScriptObject::_getFloatProperty>>(
        "bool getProperty( string &in, float &out )", "Reads a number in single precision.",
        "float grade; form.getProperty(\"grade\", grade);", kUnknown),
    firstRow<getProperty<bool, &ScriptObject::_getBoolProperty>>(
        "bool getProperty( string &in, bool &out )", "Reads a boolean.",
        "bool automatic; form.getProperty(\"automatic\", automatic);", kUnknown),
    objectRow<&ScriptObject::_setStringProperty>(
        "bool setProperty( string &in, string &in )", "Sets a text or a file name.",
        "form.setProperty(\"site\", \"South pit\");", kUnknown),
    objectRow<&ScriptObject::_setLongProperty>(
        "bool setProperty( string &in, int &in )",
        "Sets an integer, a colour or the index of an option.", "form.setProperty(\"stages\", 3);",
        kUnknown),
    objectRow<&ScriptObject::_setDoubleProperty>("bool setProperty( string &in, double &in )",
                                                 "Sets a number.",
                                                 "form.setProperty(\"flow\", 14.0);", kUnknown),
    objectRow<&ScriptObject::_setFloatProperty>("bool setProperty( string &in, float &in )",
                                                "Sets a number in single precision.",
                                                "form.setProperty(\"grade\", 0.7f);", kUnknown),
    objectRow<&ScriptObject::_setBoolProperty>("bool setProperty( string &in, bool &in )",
                                               "Sets a boolean.",
                                               "form.setProperty(\"automatic\", false);", kUnknown),
};

}  // namespace

std::span<const FunctionRow> objectMethodRows() {
    return kMethods;
}

}  // namespace korvant
