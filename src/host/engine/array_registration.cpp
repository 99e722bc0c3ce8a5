#include "host/engine/array_registration.h"

#include "host/engine/array_places.h"
#include "host/engine/array_type.h"
#include "host/engine/method_call.h"
#include "korvantide/script_array.h"

namespace korvant {

namespace {

ScriptArray* makeEmpty(asITypeInfo* type) {
    return ScriptArray::Create(type);
}
ScriptArray* makeSized(asITypeInfo* type, asUINT length) {
    return ScriptArray::Create(type, length);
}
ScriptArray* makeFilled(asITypeInfo* type, asUINT length, void* value) {
    return ScriptArray::Create(type, length, value);
}
ScriptArray* makeFromList(asITypeInfo* type, void* list) {
    return ScriptArray::Create(type, list);
}

void addReference(ScriptArray* self) {
    self->AddRef();
}
void releaseReference(ScriptArray* self) {
    self->Release();
}
int referenceCount(ScriptArray* self) {
    return self->GetRefCount();
}
void setFlag(ScriptArray* self) {
    self->SetFlag();
}
bool getFlag(ScriptArray* self) {
    return self->GetFlag();
}
void enumerateReferences(ScriptArray* self, asIScriptEngine* engine) {
    self->EnumReferences(engine);
}
void releaseReferences(ScriptArray* self, asIScriptEngine* engine) {
    self->ReleaseAllHandles(engine);
}

void* opIndex(ScriptArray* self, asUINT index) {
    return ArrayPlaces::at(*self, index);
}
ScriptArray* opAssign(ScriptArray* self, const ScriptArray& other) {
    return &(*self = other);
}
bool opEquals(ScriptArray* self, const ScriptArray& other) {
    return *self == other;
}
asUINT length(ScriptArray* self) {
    return self->GetSize();
}
bool isEmpty(ScriptArray* self) {
    return self->IsEmpty();
}
void reserveElements(ScriptArray* self, asUINT elements) {
    self->Reserve(elements);
}
void resize(ScriptArray* self, asUINT elements) {
    self->Resize(elements);
}
void insertAt(ScriptArray* self, asUINT index, const void* value) {
    self->InsertAt(index, value);
}
void insertArray(ScriptArray* self, asUINT index, const ScriptArray& other) {
    self->InsertAt(index, other);
}
void insertLast(ScriptArray* self, const void* value) {
    if (!ArrayPlaces::append(*self, value)) self->InsertLast(value);
}
void removeAt(ScriptArray* self, asUINT index) {
    self->RemoveAt(index);
}
void removeLast(ScriptArray* self) {
    self->RemoveLast();
}
void removeRange(ScriptArray* self, asUINT start, asUINT count) {
    self->RemoveRange(start, count);
}
void sortAsc(ScriptArray* self) {
    self->SortAsc();
}
void sortDesc(ScriptArray* self) {
    self->SortDesc();
}
void sortPartAsc(ScriptArray* self, asUINT start, asUINT count) {
    self->SortAsc(start, count);
}
void sortPartDesc(ScriptArray* self, asUINT start, asUINT count) {
    self->SortDesc(start, count);
}
void sort(ScriptArray* self, asIScriptFunction* less, asUINT start, asUINT count) {
    self->Sort(less, start, count);
}
void reverse(ScriptArray* self) {
    self->Reverse();
}
int find(ScriptArray* self, const void* value) {
    return self->Find(value);
}
int findFrom(ScriptArray* self, asUINT start, const void* value) {
    return self->Find(start, value);
}
int findByRef(ScriptArray* self, const void* value) {
    return self->FindByRef(value);
}
int findByRefFrom(ScriptArray* self, asUINT start, const void* value) {
    return self->FindByRef(start, value);
}

bool refuse(asIScriptEngine& engine, const char* reason) {
    engine.WriteMessage(kArrayName, 0, 0, asMSGTYPE_ERROR, reason);
    return false;
}

bool hasDefaultConstructor(const asITypeInfo& type) {
    for (asUINT i = 0; i < type.GetBehaviourCount(); ++i) {
        asEBehaviours behaviour = asBEHAVE_MAX;
        const asIScriptFunction* const function = type.GetBehaviourByIndex(i, &behaviour);
        if (behaviour == asBEHAVE_CONSTRUCT && function->GetParamCount() == 0) return true;
    }
    return false;
}

bool hasDefaultFactory(const asITypeInfo& type) {
    if (type.GetEngine()->GetEngineProperty(asEP_DISALLOW_VALUE_ASSIGN_FOR_REF_TYPE) != 0)
        return false;
    for (asUINT i = 0; i < type.GetFactoryCount(); ++i)
        if (type.GetFactoryByIndex(i)->GetParamCount() == 0) return true;
    return false;
}

/// Whether there can be arrays of what `type` is about, which makes the elements itself.
/// `uncollected`: they cannot be part of a circle of references.
bool acceptElements(asITypeInfo* type, bool& uncollected) {
    const int id = type->GetSubTypeId();
    if (id == asTYPEID_VOID) return false;
    const asITypeInfo* const element = type->GetSubType();
    if ((id & asTYPEID_MASK_OBJECT) == 0 || element == nullptr) {
        uncollected = (id & asTYPEID_OBJHANDLE) == 0;
        return true;
    }
    const asQWORD flags = element->GetFlags();
    uncollected = (flags & asOBJ_GC) == 0;
    if ((id & asTYPEID_OBJHANDLE) != 0) {
        // What is derived from the class may hold handles.
        if ((flags & asOBJ_SCRIPT_OBJECT) != 0 && (flags & asOBJ_NOINHERIT) == 0)
            uncollected = false;
        return true;
    }
    if ((flags & asOBJ_REF) != 0)
        return hasDefaultFactory(*element) ||
               refuse(*type->GetEngine(), "The subtype has no default factory");
    return (flags & asOBJ_POD) != 0 || hasDefaultConstructor(*element) ||
           refuse(*type->GetEngine(), "The subtype has no default constructor");
}

FunctionRow as(asEBehaviours behaviour, FunctionRow row) {
    row.behaviour = behaviour;
    return row;
}

constexpr char kBounds[] = "An index beyond the end is the exception \"Index out of bounds\".";
constexpr char kMemory[] = "Without memory it is the exception \"Out of memory\".";
constexpr char kBoundsOrMemory[] =
    "An index beyond the end is the exception \"Index out of bounds\", and without memory it is "
    "\"Out of memory\".";
constexpr char kUncomparable[] = "Elements of a class without opEquals and opCmp are an exception.";
constexpr char kUnordered[] = "Elements of a class without opCmp are an exception.";
constexpr char kPartUnordered[] =
    "Elements of a class without opCmp are an exception, and so is a part that goes beyond the "
    "end.";

const FunctionRow kMethods[] = {
    firstRow<opIndex>("T &opIndex(uint index)", "An element, counted from 0.",
                      "double[] grades = {1.5, 2.5};\ngrades[0] = grades[1] * 2;", kBounds),
    firstRow<opIndex>("const T &opIndex(uint index) const", "An element of a constant array.",
                      "const double[] grades = {1.5, 2.5};\nPrint(\"\" + grades[1] + \"\\n\");",
                      kBounds),
    firstRow<opAssign>("array<T> &opAssign(const array<T>&in)",
                       "Makes the array a copy of another one.",
                       "int[] first = {1, 2}, second;\nsecond = first;", kMemory),
    firstRow<insertAt>("void insertAt(uint index, const T&in value)",
                       "Inserts a value before an element, or at the end.",
                       "int[] holes = {1, 3};\nholes.insertAt(1, 2);", kBoundsOrMemory),
    firstRow<insertArray>("void insertAt(uint index, const array<T>& arr)",
                          "Inserts all elements of an array before an element, or at the end.",
                          "int[] holes = {1, 4}, more = {2, 3};\nholes.insertAt(1, more);",
                          kBoundsOrMemory),
    firstRow<insertLast>("void insertLast(const T&in value)", "Adds a value at the end.",
                         "string[] names;\nnames.insertLast(\"NR-02\");", kMemory),
    firstRow<removeAt>("void removeAt(uint index)", "Removes an element.",
                       "int[] holes = {1, 2, 3};\nholes.removeAt(0);", kBounds),
    firstRow<removeLast>("void removeLast()", "Removes the last element.",
                         "int[] holes = {1, 2, 3};\nholes.removeLast();",
                         "On an empty array it is the exception \"Index out of bounds\"."),
    firstRow<removeRange>(
        "void removeRange(uint start, uint count)",
        "Removes elements from an index on, as many as there are up to the count.",
        "int[] holes = {1, 2, 3, 4};\nholes.removeRange(1, 2);", kBounds),
    firstRow<length>("uint length() const", "The number of elements.",
                     "int[] holes = {1, 2};\nfor (uint i = 0; i < holes.length(); i++) "
                     "Print(\"\" + holes[i] + \"\\n\");"),
    firstRow<reserveElements>("void reserve(uint length)",
                              "Makes room for that many elements, so that adding them is faster.",
                              "int[] holes;\nholes.reserve(1000);", kMemory),
    firstRow<resize>("void resize(uint length)",
                     "Cuts the array, or adds elements that are 0, empty or null.",
                     "double[] grades;\ngrades.resize(100);", kMemory),
    firstRow<sortAsc>("void sortAsc()",
                      "Sorts the array, smallest first. Equal elements keep their order.",
                      "int[] holes = {3, 1, 2};\nholes.sortAsc();", kUnordered),
    firstRow<sortPartAsc>("void sortAsc(uint startAt, uint count)",
                          "Sorts a part of the array, smallest first.",
                          "int[] holes = {9, 3, 1, 2};\nholes.sortAsc(1, 3);", kPartUnordered),
    firstRow<sortDesc>("void sortDesc()",
                       "Sorts the array, largest first. Equal elements keep their order.",
                       "int[] holes = {3, 1, 2};\nholes.sortDesc();", kUnordered),
    firstRow<sortPartDesc>("void sortDesc(uint startAt, uint count)",
                           "Sorts a part of the array, largest first.",
                           "int[] holes = {0, 3, 1, 2};\nholes.sortDesc(1, 3);", kPartUnordered),
    firstRow<reverse>("void reverse()", "Turns the order of the elements round.",
                      "int[] holes = {1, 2, 3};\nholes.reverse();"),
    firstRow<find>("int find(const T&in if_handle_then_const value) const",
                   "The index of the first element that equals the value; -1 for none.",
                   "string[] names = {\"NR-01\", \"NR-02\"};\nint at = names.find(\"NR-02\");",
                   kUncomparable),
    firstRow<findFrom>("int find(uint startAt, const T&in if_handle_then_const value) const",
                       "The same from an index on.",
                       "int[] holes = {1, 2, 1};\nint at = holes.find(1, 1);", kUncomparable),
    firstRow<findByRef>(
        "int findByRef(const T&in if_handle_then_const value) const",
        "The index of the element that is this very object, not one that equals it; -1 for "
        "none.",
        "string@[] names = {\"NR-01\"};\nint at = names.findByRef(names[0]);"),
    firstRow<findByRefFrom>(
        "int findByRef(uint startAt, const T&in if_handle_then_const value) const",
        "The same from an index on.",
        "string@[] names = {\"NR-01\"};\nint at = names.findByRef(0, names[0]);"),
    firstRow<opEquals>("bool opEquals(const array<T>&in) const",
                       "Whether two arrays have equal elements in the same order.",
                       "int[] first = {1}, second = {1};\nbool same = first == second;"),
    firstRow<isEmpty>("bool isEmpty() const", "Whether the array has no elements.",
                      "int[] holes;\nbool none = holes.isEmpty();"),
    firstRow<sort>("void sort(const less &in, uint startAt = 0, uint count = uint(-1))",
                   "Sorts by a function that says whether its first argument stands before its "
                   "second. Equal elements keep their order.",
                   "bool byLength(const string &in a, const string &in b) {\n"
                   "    return a.length() < b.length();\n}\n\n"
                   "int main() {\n    string[] names = {\"NR-002\", \"NR-1\"};\n"
                   "    names.sort(byLength);\n    return 0;\n}",
                   "An exception in the function ends the sort and leaves the array as it was."),
};

const FunctionRow kBehaviours[] = {
    as(asBEHAVE_TEMPLATE_CALLBACK, functionRow<acceptElements>("bool f(int&in, bool&out)", "")),
    factoryRow<makeEmpty>("array<T>@ f(int&in)", ""),
    factoryRow<makeSized>("array<T>@ f(int&in, uint length) explicit", ""),
    factoryRow<makeFilled>("array<T>@ f(int&in, uint length, const T &in value)", ""),
    as(asBEHAVE_LIST_FACTORY,
       functionRow<makeFromList>("array<T>@ f(int&in type, int&in list) {repeat T}", "")),
    as(asBEHAVE_ADDREF, firstRow<addReference>("void f()", "")),
    as(asBEHAVE_RELEASE, firstRow<releaseReference>("void f()", "")),
    as(asBEHAVE_GETREFCOUNT, firstRow<referenceCount>("int f()", "")),
    as(asBEHAVE_SETGCFLAG, firstRow<setFlag>("void f()", "")),
    as(asBEHAVE_GETGCFLAG, firstRow<getFlag>("bool f()", "")),
    as(asBEHAVE_ENUMREFS, firstRow<enumerateReferences>("void f(int&in)", "")),
    as(asBEHAVE_RELEASEREFS, firstRow<releaseReferences>("void f(int&in)", "")),
};

}  // namespace

std::span<const FunctionRow> arrayMethodRows() {
    return kMethods;
}

int registerArrayType(asIScriptEngine* engine) {
    static constexpr char kType[] = "array<T>";
    keepArrayRecords(*engine);
    int worst =
        engine->RegisterObjectType("array<class T>", 0, asOBJ_REF | asOBJ_GC | asOBJ_TEMPLATE);
    if (worst < 0) return worst;
    markOwnType(engine, kArrayName);
    worst = registerMethods(engine, kType, kBehaviours);
    const int comparator = engine->RegisterFuncdef(
        "bool array<T>::less(const T&in if_handle_then_const a, "
        "const T&in if_handle_then_const b)");
    if (worst == 0 && comparator < 0) worst = comparator;
    const int methods = registerMethods(engine, kType, kMethods);
    if (worst == 0) worst = methods;
    const int result = engine->RegisterDefaultArrayType(kType);
    return worst == 0 && result < 0 ? result : worst;
}

}  // namespace korvant
