// The property object that scripts know as `Object`.
#ifndef KORVANTIDE_SCRIPT_OBJECT_H
#define KORVANTIDE_SCRIPT_OBJECT_H

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "korvant/kor_stamp.h"
#include "korvantide/export.h"

namespace korvant {
struct ObjectAccess;
}

/// A named, ordered set of typed properties with classes, categories, groups of repeated elements,
/// rules and translations, which scripts and the host fill, read and show to the user for editing.
///
/// Every operation has a form with a leading underscore, which scripts call and which takes its
/// arguments by reference, and a plain form, which does the same for the host. Operations of
/// KorStamp are described there. Nothing is thrown: an operation that runs out of memory leaves
/// the object as it was and answers false, empty or 0, ranOutOfMemory() is true then, and a running
/// script gets the exception "Out of memory". Objects count against the memory of a run (runBytes
/// in KorvantLimits) by what they take while a script runs; what a host makes between runs is not
/// counted. One thread: the one that runs the scripts.
class KORVANTIDE_API ScriptObject : public KorStamp {
  public:
    /// Buttons of a message box.
    static const std::int32_t BU_ABORT_RETRY_IGNORE = 1;
    static const std::int32_t BU_CANCEL_TRY_CONTINUE = 2;
    static const std::int32_t BU_CONTINUE_ABORT = 3;
    static const std::int32_t BU_IGNORE_ALL_CANCEL = 4;
    static const std::int32_t BU_RETRY_CANCEL = 5;
    static const std::int32_t BU_SKIP_ALL_CANCEL = 6;
    static const std::int32_t BU_YES_NO = 7;
    static const std::int32_t BU_YES_NO_CANCEL = 8;
    static const std::int32_t BU_YES_NO_ALL = 9;
    static const std::int32_t BU_YES_NO_ALL_CANCEL = 10;
    static const std::int32_t BU_YES_ALL_NO = 11;
    static const std::int32_t BU_YES_ALL_NO_CANCEL = 12;
    static const std::int32_t BU_YES_ALL_NO_ALL = 13;
    static const std::int32_t BU_YES_ALL_NO_ALL_CANCEL = 14;
    static const std::int32_t BU_OK = 15;
    static const std::int32_t BU_OK_CANCEL = 16;
    /// Icons of a message box.
    static const std::int32_t IC_WARNING = 100;
    static const std::int32_t IC_ERROR = 101;
    static const std::int32_t IC_INFORMATION = 102;
    static const std::int32_t IC_QUESTION = 103;
    /// Answers of a message box.
    static const std::int32_t ID_ABORT = 201;
    static const std::int32_t ID_CANCEL = 202;
    static const std::int32_t ID_CLOSE = 203;
    static const std::int32_t ID_CONTINUE = 204;
    static const std::int32_t ID_IGNORE = 205;
    static const std::int32_t ID_IGNOREALL = 206;
    static const std::int32_t ID_NO = 207;
    static const std::int32_t ID_NOTOALL = 208;
    static const std::int32_t ID_OK = 209;
    static const std::int32_t ID_RETRY = 210;
    static const std::int32_t ID_SKIP = 211;
    static const std::int32_t ID_SKIPALL = 212;
    static const std::int32_t ID_TRYAGAIN = 213;
    static const std::int32_t ID_YES = 214;
    static const std::int32_t ID_YESTOALL = 215;

    /// The language of the module, shared by all objects: 0 English, 1 French, 2 Spanish.
    static std::int32_t m_locale;
    /// Called before the user is asked something, and after; null for none.
    using Hook = void (*)();
    static Hook m_before;
    static Hook m_after;

    /// An empty object with a reference count of 0.
    ScriptObject();
    /// Deliberate: the copy reports the reference count of `other`, as hosts expect, and has as
    /// many references: each is let go by a release() of its own. An object that nobody has a
    /// reference to takes the count over by assignment as well. May throw std::bad_alloc.
    ScriptObject(const ScriptObject& other);
    ScriptObject& operator=(const ScriptObject& other);
    ~ScriptObject() override;

    void addRef();
    /// Deletes the object when its only reference goes. Releasing an object without references
    /// counts down to -1 and deletes nothing.
    void release();
    /// The reported count.
    std::int32_t referenceCount() const;

    void clear() override;

    bool addProperty(std::string name, std::string label, bool value, bool flag,
                     long radioGroup) override;
    bool addProperty(std::string name, std::string label, float value, std::string unit,
                     bool flag) override;
    bool addProperty(std::string name, std::string label, double value, std::string unit,
                     bool flag) override;
    bool addProperty(std::string name, std::string label, int value, std::string unit,
                     bool flag) override;
    bool addProperty(std::string name, std::string label, long value, std::string unit,
                     bool flag) override;
    bool addProperty(std::string name, std::string label, const char* value, const char* filter,
                     bool fileFlag, bool flag) override;
    bool addProperty(std::string name, std::string label, const char* value, bool flag,
                     bool alternate) override;
    void addOption(std::string option) override;
    bool addOptionProperty(std::string name, std::string label, int value, bool flag) override;
    bool addOptionProperty(std::string name, std::string label, long value, bool flag) override;

    int getPropertiesCount() override;
    std::string getPropertyName(int index) override;
    int getPropertyType(int index) override;
    int getPropertyTypeByName(std::string name) override;

    bool getProperty(std::string name, bool* value) override;
    bool getProperty(std::string name, float* value) override;
    bool getProperty(std::string name, double* value) override;
    bool getProperty(std::string name, int* value) override;
    bool getProperty(std::string name, long* value) override;
    bool getProperty(std::string name, std::string* value) override;

    bool setProperty(std::string name, bool value) override;
    bool setProperty(std::string name, float value) override;
    bool setProperty(std::string name, double value) override;
    bool setProperty(std::string name, int value) override;
    bool setProperty(std::string name, long value) override;
    bool setProperty(std::string name, std::string value) override;

    bool addListener(std::string name, KorStampListener* listener) override;
    bool edit() override;
    void setTitle(std::string title) override;
    void addCategory(std::string name) override;
    bool append(KorStamp& other) override;
    void resetIterators() override;
    bool getNextCategory(std::string* name) override;
    bool getNextProperty(std::string* name, int* index) override;
    void addTranslation(long locale, std::string source, std::string text) override;
    void addErrorConstraint(std::string name, std::string expression, std::string message) override;
    void addWarningConstraint(std::string name, std::string expression,
                              std::string message) override;
    void addEnableConstraint(std::string name, std::string expression) override;
    void addHint(std::string name, std::string text) override;
    void addComputation(std::string name, std::string expression) override;
    void addClass(std::string name, bool value) override;

    using KorStamp::addClass;
    using KorStamp::getNextClass;

    using KorStamp::addOptionProperty;
    using KorStamp::addProperty;
    using KorStamp::setProperty;

    /// Whether an operation of any object has been refused since this was asked last, because there
    /// was no memory or the limit of the run that is under way would have been passed: that is how
    /// its answer false differs from the one for a name that is taken.
    static bool ranOutOfMemory();

    // The same operations as scripts call them.
    bool _addStringProperty(std::string& name, std::string& label, std::string& value, bool& flag);
    bool _addStringFileProperty(std::string& name, std::string& label, std::string& value,
                                std::string& filter, bool& fileFlag, bool& flag);
    bool _addIntProperty(std::string& name, std::string& label, std::int32_t& value,
                         std::string& unit, bool& flag);
    bool _addLongProperty(std::string& name, std::string& label, std::int32_t& value,
                          std::string& unit, bool& flag);
    bool _addIntOptionProperty(std::string& name, std::string& label, std::int32_t& value,
                               bool& flag);
    bool _addLongOptionProperty(std::string& name, std::string& label, std::int32_t& value,
                                bool& flag);
    bool _addDoubleProperty(std::string& name, std::string& label, double& value, std::string& unit,
                            bool& flag);
    bool _addFloatProperty(std::string& name, std::string& label, float& value, std::string& unit,
                           bool& flag);
    bool _addBoolProperty(std::string& name, std::string& label, bool& value, bool& flag);
    bool _addBoolRadioProperty(std::string& name, std::string& label, bool& value, bool& flag,
                               std::int32_t& radioGroup);
    void _addOption(std::string& option);
    void _addCategory(std::string& name);
    /// Does nothing when a class of that name exists. `value`: its properties may be edited.
    void _addClass(std::string& name, bool& value);
    void _setTitle(std::string& title);
    std::string getTitle();
    /// The object's own title, valid as long as the object; null when memory is exhausted.
    std::string* _getTitle();

    /// The result is emptied first when the index is out of range.
    void _getPropertyName(std::int32_t& index, std::string& name);
    std::int32_t _getPropertyType(std::int32_t& index);
    std::int32_t _getPropertyTypeByName(std::string& name);
    // False for an unknown name; the result is left as it was.
    bool _getStringProperty(std::string& name, std::string& value);
    bool _getIntProperty(std::string& name, std::int32_t& value);
    bool _getLongProperty(std::string& name, std::int32_t& value);
    bool _getDoubleProperty(std::string& name, double& value);
    bool _getFloatProperty(std::string& name, float& value);
    bool _getBoolProperty(std::string& name, bool& value);
    bool _setStringProperty(std::string& name, const std::string& value);
    bool _setIntProperty(std::string& name, std::int32_t& value);
    bool _setLongProperty(std::string& name, std::int32_t& value);
    bool _setDoubleProperty(std::string& name, double& value);
    bool _setFloatProperty(std::string& name, float& value);
    bool _setBoolProperty(std::string& name, bool& value);

    void _resetIterators();
    /// The classes in order; each sets how far the categories, and they how far the properties
    /// go. A group's class is passed over. An object without classes has one without a name.
    bool getNextClass(std::string* name, bool* value);
    bool _getNextClass(std::string& name, bool& value);
    bool _getNextCategory(std::string& name);
    bool _getNextProperty(std::string& name, std::int32_t& index);

    void setLocale(std::int32_t locale);
    void _setLocale(std::int32_t& locale);
    std::int32_t getLocale();
    std::int32_t _getLocale();
    /// Codes from 1 to 1000 are kept; any other is ignored.
    void _addTranslation(std::int32_t& locale, std::string& source, std::string& text);
    /// The text in the language of the module, or the text itself.
    std::string translate(const std::string& text);
    std::vector<std::string> translate(const std::vector<std::string>& texts);
    std::map<long, std::string> translate(const std::map<long, std::string>& texts);
    std::map<long, std::vector<std::string>> translate(
        const std::map<long, std::vector<std::string>>& texts);
    /// Adds the captions of the message box buttons; a key that is there keeps its caption.
    void translate(std::map<unsigned long, const char*>* captions);

    /// Declares a group: `templ` is the layout of an element and joins this object. The flags:
    /// elements may be added, copied, removed, put in another order.
    void addGroup(std::string name, ScriptObject& templ, bool add, bool copy, bool remove,
                  bool order);
    void _addGroup(std::string& name, ScriptObject& templ, bool& add, bool& copy, bool& remove,
                   bool& order);
    /// Adds a copy of `element` to the group that addGroup() named last.
    void addGroupElement(ScriptObject& element);
    /// Assigns a copy of the element; false when there is none at `index`.
    bool getGroup(std::string name, std::int32_t index, ScriptObject* element);
    bool _getGroup(std::string& name, std::int32_t& index, ScriptObject& element);
    std::int32_t getGroupSize(std::string name);
    std::int32_t _getGroupSize(std::string& name);
    /// The index of the element that the user looks at; -1 none. 0 for an unknown group.
    std::int32_t getGroupElement(std::string name);
    std::int32_t _getGroupElement(std::string& name);
    void setGroupElement(std::string name, std::int32_t index);
    void _setGroupElement(std::string& name, std::int32_t& index);

    // Rules. Conditions and computations are expressions over the properties' names.
    void _addErrorConstraint(std::string& name, std::string& expression, std::string& message);
    void _addWarningConstraint(std::string& name, std::string& expression, std::string& message);
    void _addEnableConstraint(std::string& name, std::string& expression);
    void _addHint(std::string& name, std::string& text);
    void _addComputation(std::string& name, std::string& expression);

    /// The value of the BU_, IC_ or ID_ constant of that name; 0 for any other text.
    std::int32_t VAL(std::string& name);
    /// An ID_ code.
    std::int32_t messageBox(std::string caption, std::string text, std::int32_t buttons,
                            std::int32_t icon, std::string extra);
    std::int32_t _messageBoxStr(std::string& caption, std::string& text, std::string& buttonsName,
                                std::string& iconName);
    std::int32_t _messageBoxStrEx(std::string& caption, std::string& text, std::string& buttonsName,
                                  std::string& iconName, std::string& extra);
    std::int32_t prompt(std::string label, std::int32_t value);
    std::int32_t _promptInteger(std::string& label, std::int32_t& value);
    double prompt(std::string label, double value);
    double _promptDouble(std::string& label, double& value);
    std::string prompt(std::string label, std::string value);
    /// The answer, in one text for the whole module that the next call overwrites.
    const std::string& _promptString(std::string& label, const std::string& value);
    /// Shows a rich text (RTF or plain) to read.
    void showRtfDialog(std::string caption, std::string text);

  protected:
    /// Index of a new property of no type yet, or -1 when the name is taken.
    long createProperty(std::string& name, std::string label, bool& flag);
    /// append(other) for an object with at least one class: 0; else -1.
    long createCompositProperties(ScriptObject& other);

  private:
    friend struct korvant::ObjectAccess;
    struct Impl;
    Impl* impl_;
};

#endif
