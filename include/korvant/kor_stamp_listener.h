// Who is told that a property was edited.
#ifndef KORVANT_KOR_STAMP_LISTENER_H
#define KORVANT_KOR_STAMP_LISTENER_H

#include <string>

class KorStamp;

/// Owned by whoever adds it to an object; it must outlive the object or be replaced by null there,
/// also after the object's clear(), which keeps its listeners.
class KorStampListener {
  public:
    virtual ~KorStampListener() = default;
    /// The user confirmed an edit that changed the value of `property`. The new value is in the
    /// object. The listener may call the object, edit() included, and may let go of it.
    virtual void propertyChanged(KorStamp& object, const std::string& property) = 0;

  protected:
    KorStampListener() = default;
    KorStampListener(const KorStampListener&) = default;
    KorStampListener& operator=(const KorStampListener&) = default;
};

#endif
