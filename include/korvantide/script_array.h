// The arrays of scripts, for hosts.
#ifndef KORVANTIDE_SCRIPT_ARRAY_H
#define KORVANTIDE_SCRIPT_ARRAY_H

#include <angelscript.h>

#include <atomic>

#include "korvantide/export.h"

namespace korvant {
struct ArrayType;
class ArrayUse;
struct ArrayPlaces;
}  // namespace korvant

/// The script type `array<T>`, or `T[]`, of an engine whose host registered no array type of its
/// own before ConfigureScriptEngine. A function that takes or returns `array<T>@` in a script takes
/// or returns a `ScriptArray*` here.
///
/// Operations have the names of those of the engine's array add-on and do the same. What `value`
/// and the results of At() point to depends on the elements: numbers and truth values are pointed
/// to; for objects the pointer is the object itself; for handles it points to the handle.
///
/// Nothing is thrown. An operation that fails changes nothing unless it says so, answers false,
/// null or -1, and sets an exception on the script that runs on this thread, if one does: "Index
/// out of bounds", "Out of memory" (also at the limit of a run), "The array is in use",
/// "Mismatching array types", or what the script raised that was called. Elements may be script
/// objects, whose constructors, assignments and comparisons are script code; while it runs, the
/// array refuses to be changed. One thread: the one that runs the scripts.
class KORVANTIDE_API ScriptArray {
  public:
    /// A new array with one reference, which is the caller's. `type` is an instance of the type,
    /// such as engine->GetTypeInfoByDecl("array<int>"). Null on failure: no memory, a type that is
    /// no array of this module, or a constructor of elements that raised.
    static ScriptArray* Create(asITypeInfo* type) noexcept;
    static ScriptArray* Create(asITypeInfo* type, asUINT length) noexcept;
    /// `length` copies of what `defaultValue` points to.
    static ScriptArray* Create(asITypeInfo* type, asUINT length, void* defaultValue) noexcept;
    /// From the buffer of an initialisation list, as the engine lays it out. Handles and objects of
    /// reference types are taken out of it.
    static ScriptArray* Create(asITypeInfo* type, void* listBuffer) noexcept;

    void AddRef() const noexcept;
    void Release() const noexcept;

    asITypeInfo* GetArrayObjectType() const noexcept;  ///< without a reference for the caller
    int GetArrayTypeId() const noexcept;
    int GetElementTypeId() const noexcept;

    asUINT GetSize() const noexcept { return size_; }
    bool IsEmpty() const noexcept { return size_ == 0; }

    /// Makes room, so that the array takes no memory until it has that many elements.
    bool Reserve(asUINT maxElements) noexcept;
    /// New elements are 0, null, or made by their default constructor.
    bool Resize(asUINT numElements) noexcept;

    /// Null beyond the end, with the exception set. Valid until the array is changed.
    void* At(asUINT index) noexcept;
    const void* At(asUINT index) const noexcept;

    /// Copies what `value` points to into the element: an assignment for objects, one more
    /// reference for handles.
    bool SetValue(asUINT index, const void* value) noexcept;

    /// Objects that are there already are assigned to; when that raises, the array has the new size
    /// and the elements before it.
    ScriptArray& operator=(const ScriptArray& other) noexcept;

    /// False as well when elements cannot be compared or a comparison raised.
    bool operator==(const ScriptArray& other) const noexcept;

    /// `value` may be an element of the array, and `other` the array itself.
    bool InsertAt(asUINT index, const void* value) noexcept;
    bool InsertAt(asUINT index, const ScriptArray& other) noexcept;
    bool InsertLast(const void* value) noexcept;
    bool RemoveAt(asUINT index) noexcept;
    bool RemoveLast() noexcept;
    /// What there is of `count` elements from `start` on; `start` may be the size.
    bool RemoveRange(asUINT start, asUINT count) noexcept;

    /// Numbers by their value, objects by their opCmp, null handles first and after SortDesc last.
    /// Equal elements keep their order, and an order that contradicts itself gives some order of
    /// the same elements. A sort that is stopped or raises leaves the objects as they were.
    bool SortAsc() noexcept { return Sort(0, size_, true); }
    bool SortDesc() noexcept { return Sort(0, size_, false); }
    bool SortAsc(asUINT startAt, asUINT count) noexcept { return Sort(startAt, count, true); }
    bool SortDesc(asUINT startAt, asUINT count) noexcept { return Sort(startAt, count, false); }
    /// Fewer than two elements are never out of bounds.
    bool Sort(asUINT startAt, asUINT count, bool asc) noexcept;
    /// `less` says whether its first argument stands before its second. `count` ends at the end.
    bool Sort(asIScriptFunction* less, asUINT startAt, asUINT count) noexcept;
    bool Reverse() noexcept;

    /// The index of the first element from `startAt` on that equals what `value` points to; -1 for
    /// none. Objects are compared by opEquals or else opCmp.
    int Find(const void* value) const noexcept { return Find(0, value); }
    int Find(asUINT startAt, const void* value) const noexcept;
    /// The same by identity: the very object, or the handle to it.
    int FindByRef(const void* ref) const noexcept { return FindByRef(0, ref); }
    int FindByRef(asUINT startAt, const void* ref) const noexcept;

    /// The elements side by side: numbers themselves, handles, or pointers to the objects. Valid
    /// until the array grows; null while nothing was ever put into it.
    void* GetBuffer() noexcept { return data_; }

    /// For the engine's garbage collector.
    int GetRefCount() const noexcept;
    void SetFlag() noexcept { collecting_ = true; }
    bool GetFlag() const noexcept { return collecting_; }
    void EnumReferences(asIScriptEngine* engine) noexcept;
    void ReleaseAllHandles(asIScriptEngine* engine) noexcept;

    ScriptArray(const ScriptArray&) = delete;

  private:
    friend class korvant::ArrayUse;
    friend struct korvant::ArrayPlaces;

    explicit ScriptArray(korvant::ArrayType& type) noexcept;
    ~ScriptArray();

    static ScriptArray* make(asITypeInfo* type) noexcept;
    ScriptArray* orNone(bool filled) noexcept;
    bool takeList(unsigned char* list) noexcept;
    bool takeValues(const unsigned char* list, asUINT count) noexcept;

    unsigned char* place(asQWORD index) const noexcept;
    void* elementAt(asUINT index) const noexcept;
    bool mayChange() const noexcept;
    bool setCapacity(asQWORD elements) noexcept;
    bool makeRoom(asQWORD elements) noexcept;

    void* copyObject(const void* value) noexcept;
    bool assignElement(void* object, const void* value) noexcept;
    bool addDefaults(asUINT count) noexcept;
    bool addCopy(const void* value) noexcept;
    bool addCopies(const ScriptArray& other) noexcept;
    void show(asUINT index, asUINT count) noexcept;
    bool pushValue(const void* value) noexcept;
    bool pushValues(asUINT count, const void* value) noexcept;
    void drop(asQWORD first, asQWORD last) noexcept;
    void shrinkTo(asUINT elements) noexcept;
    void setHandle(asUINT index, void* object) noexcept;
    void assignPointers(const ScriptArray& other) noexcept;
    bool sortElements(asIScriptFunction* less, asUINT startAt, asUINT count, bool asc) noexcept;

    mutable std::atomic<int> references_{1};
    mutable bool collecting_ = false;
    mutable asUINT uses_ = 0;  ///< operations under way that script code runs inside of
    asUINT size_ = 0;
    asUINT capacity_ = 0;
    unsigned char* data_ = nullptr;
    korvant::ArrayType& type_;
};

#endif
