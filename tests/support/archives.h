// Keyed archives assembled by hand, valid and broken ones.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "Foundation/keyed_archive_uid.h"
#include "support/hosted.h"

namespace test {

using Entries = std::vector<std::pair<const char*, NSObject*>>;

NSObject* uid(std::uint32_t index);
NSObject* integer(long long value);
NSObject* real(double value);
NSObject* boolean(bool value);
NSArray* list(const std::vector<NSObject*>& items);
/// Nil values are left out.
NSMutableDictionary* fields(const Entries& entries);
NSObject* classNamed(const char* name);

NSData* binary(NSObject* tree);

/// The outer dictionary around an archive's objects.
NSMutableDictionary* archiveAround(NSObject* objects, NSObject* root = uid(1));
/// The given objects come after the first, which stands for nil.
NSData* archive(const std::vector<NSObject*>& objects, NSObject* root = uid(1));
/// One object of that class; the others are objects 3 and up.
NSData* archiveOf(const char* className, const Entries& entries,
                  const std::vector<NSObject*>& others = {});

/// That many nested arrays.
NSData* nestedArrays(std::uint32_t count);

struct NamedArchive {
  const char* name;
  NSData* data;
};

/// Archives from which no reader can make an object.
std::vector<NamedArchive> brokenArchives();

/// An archive with most kinds of objects, as the platform writes it. Its collections are immutable:
/// a damaged mutable one might contain itself, and would never be freed.
NSData* richArchive();

NSData* colorArchive();

std::string bytesOf(NSData* data);
NSData* dataOf(const std::string& bytes);

}  // namespace test
