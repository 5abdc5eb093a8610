#include "CoreGraphics/objects.h"

OBJC_EXPORTED_CLASS(CGDataProvider, NSObject, objc::Ivar<"bytes", &CGDataProvider::bytes>,
                    objc::Ivar<"size", &CGDataProvider::size>,
                    objc::Ivar<"info", &CGDataProvider::info>,
                    objc::Ivar<"release", &CGDataProvider::release>,
                    objc::Ivar<"file", &CGDataProvider::file>,
                    objc::Method<"dealloc", &CGDataProvider::dealloc>)

void CGDataProvider::dealloc() {
  if (release != nullptr) release(info, bytes, size);
  object_dispose(this);
}

extern "C" {

HOST_EXPORT CGDataProviderRef CGDataProviderCreateWithData(
    void* info, const void* data, std::size_t size, CGDataProviderReleaseDataCallback release) {
  auto* provider = host::makeObject<CGDataProvider>();
  provider->bytes = static_cast<const std::uint8_t*>(data);
  provider->size = size;
  provider->info = info;
  provider->release = release;
  return provider;
}

HOST_EXPORT CGDataProviderRef CGDataProviderCreateWithCFData(NSData* data) {
  if (data == nullptr) return nullptr;
  objc_retain(data);
  return CGDataProviderCreateWithData(
      data, send(data, NSData::bytes), send(data, NSData::length),
      [](void* info, const void*, std::size_t) { objc_release(static_cast<NSData*>(info)); });
}

HOST_EXPORT NSData* CGDataProviderCopyData(CGDataProviderRef provider) {
  if (provider == nullptr) return nullptr;
  return static_cast<NSData*>(
      objc_retain(NSData::dataWithBytes(provider->start(), provider->size)));
}

HOST_EXPORT CGDataProviderRef CGDataProviderRetain(CGDataProviderRef provider) {
  return static_cast<CGDataProviderRef>(objc_retain(provider));
}
HOST_EXPORT void CGDataProviderRelease(CGDataProviderRef provider) { objc_release(provider); }
}
