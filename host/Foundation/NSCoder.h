// Coders: objects write themselves into them and read themselves from them.
#pragma once

#include "platform/Foundation.h"
#include "runtime/send.h"

/// Every call raises for a nil key. Encoding a key again replaces its value. Decoding returns zero
/// or nil for an absent key, and raises for a value of another kind.
struct NSCoder : NSObject {
  /// An object that is already in the archive is stored as a reference.
  void encodeObject(NSObject* object, NSString* key) {
    send<void>(this, "encodeObject:forKey:"_sel, object, key);
  }
  void encodeInteger(NSInteger value, NSString* key) {
    send<void>(this, "encodeInteger:forKey:"_sel, value, key);
  }
  void encodeFloat(float value, NSString* key) {
    send<void>(this, "encodeFloat:forKey:"_sel, value, key);
  }
  void encodeDouble(double value, NSString* key) {
    send<void>(this, "encodeDouble:forKey:"_sel, value, key);
  }
  void encodeBytes(const void* bytes, NSUInteger length, NSString* key) {
    send<void>(this, "encodeBytes:length:forKey:"_sel, static_cast<const unsigned char*>(bytes),
               length, key);
  }

  bool containsValue(NSString* key) { return send<bool>(this, "containsValueForKey:"_sel, key); }
  NSObject* decodeObject(NSString* key) {
    return send<NSObject*>(this, "decodeObjectForKey:"_sel, key);
  }
  /// Also raises for a number beyond 32 bits.
  int decodeInt(NSString* key) { return send<int>(this, "decodeIntForKey:"_sel, key); }
  float decodeFloat(NSString* key) { return send<float>(this, "decodeFloatForKey:"_sel, key); }
  double decodeDouble(NSString* key) { return send<double>(this, "decodeDoubleForKey:"_sel, key); }

  /// A list of objects under one key, as the collections use it.
  void encodeObjects(NSArray* objects, NSString* key) {
    send<void>(this, "_encodeArrayOfObjects:forKey:"_sel, objects, key);
  }
  /// Nil for an absent key; raises if one of the objects decodes to nil.
  NSArray* decodeObjects(NSString* key) {
    return send<NSArray*>(this, "_decodeArrayOfObjectsForKey:"_sel, key);
  }
};
