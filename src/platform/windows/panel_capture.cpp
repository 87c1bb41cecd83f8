#include "platform/windows/panel_capture.h"

#include <olectl.h>

#include <cstddef>
#include <memory>
#include <type_traits>
#include <vector>

namespace orvalis {
namespace {

constexpr WORD kPaletteVersion = 0x300;
constexpr UINT kPaletteSize = 256;

struct DeleteGdiObject {
  void operator()(void* object) const { DeleteObject(object); }
};
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteGdiObject>;
using Palette = std::unique_ptr<std::remove_pointer_t<HPALETTE>, DeleteGdiObject>;

/// The device context of a window or of its client area.
class WindowContext {
 public:
  WindowContext(HWND window, bool client) : window_(window), context_(client ? GetDC(window) : GetWindowDC(window)) {}
  WindowContext(const WindowContext&) = delete;
  WindowContext& operator=(const WindowContext&) = delete;
  ~WindowContext() {
    if (context_ != nullptr) ReleaseDC(window_, context_);
  }
  [[nodiscard]] HDC get() const { return context_; }

 private:
  HWND window_;
  HDC context_;
};

/// A memory device context, with a bitmap and optionally a palette selected during its lifetime.
class MemoryContext {
 public:
  MemoryContext(HDC like, HBITMAP bitmap) : context_(CreateCompatibleDC(like)) {
    if (context_ != nullptr) previous_bitmap_ = SelectObject(context_, bitmap);
  }
  MemoryContext(const MemoryContext&) = delete;
  MemoryContext& operator=(const MemoryContext&) = delete;
  ~MemoryContext() {
    if (context_ == nullptr) return;
    if (previous_bitmap_ != nullptr) SelectObject(context_, previous_bitmap_);
    if (previous_palette_ != nullptr) SelectPalette(context_, previous_palette_, FALSE);
    DeleteDC(context_);
  }
  void Select(HPALETTE palette) {
    previous_palette_ = SelectPalette(context_, palette, FALSE);
    RealizePalette(context_);
  }
  [[nodiscard]] HDC get() const { return context_; }

 private:
  HDC context_;
  HGDIOBJ previous_bitmap_ = nullptr;
  HPALETTE previous_palette_ = nullptr;
};

/// The palette of a screen with 256 colours; null on any other.
Palette SystemPalette(HDC context) {
  const bool has_palette = (GetDeviceCaps(context, RASTERCAPS) & RC_PALETTE) != 0;
  if (!has_palette || GetDeviceCaps(context, SIZEPALETTE) != static_cast<int>(kPaletteSize)) return nullptr;
  // LOGPALETTE includes the first entry; the others follow it.
  std::vector<std::byte> memory(sizeof(LOGPALETTE) + (kPaletteSize - 1) * sizeof(PALETTEENTRY));
  auto* colours = reinterpret_cast<LOGPALETTE*>(memory.data());
  colours->palVersion = kPaletteVersion;
  colours->palNumEntries = kPaletteSize;
  GetSystemPaletteEntries(context, 0, kPaletteSize, colours->palPalEntry);
  return Palette(CreatePalette(colours));
}

}  // namespace

PicturePtr CaptureForm(HWND form) {
  RECT edges{};
  if (GetWindowRect(form, &edges) == 0) throw Win32Error("the window to capture is gone");
  return CaptureWindow(form, false, 0, 0, edges.right - edges.left, edges.bottom - edges.top);
}

PicturePtr CaptureWindow(HWND window, bool client, int left, int top, int width, int height) {
  const WindowContext source(window, client);
  Bitmap bitmap(CreateCompatibleBitmap(source.get(), width, height));
  Palette palette = SystemPalette(source.get());
  {
    MemoryContext memory(source.get(), bitmap.get());
    if (palette) memory.Select(palette.get());
    if (BitBlt(memory.get(), 0, 0, width, height, source.get(), left, top, SRCCOPY) == 0) {
      throw Win32Error("the window cannot be captured");
    }
  }
  return CreateBitmapPicture(bitmap.release(), palette.release());
}

PicturePtr CreateBitmapPicture(HBITMAP bitmap, HPALETTE palette) {
  PICTDESC about{};
  about.cbSizeofstruct = sizeof(about);
  about.picType = PICTYPE_BITMAP;
  about.bmp.hbitmap = bitmap;
  about.bmp.hpal = palette;
  void* picture = nullptr;
  const HRESULT result = OleCreatePictureIndirect(&about, IID_IPicture, TRUE, &picture);
  if (FAILED(result)) {
    DeleteObject(bitmap);
    if (palette != nullptr) DeleteObject(palette);
    throw ComError("no picture can be created", result);
  }
  return PicturePtr(static_cast<IPicture*>(picture));
}

QImage ImageOf(IPicture& picture) {
  OLE_HANDLE handle = 0;
  CheckCom("the picture has no bitmap", picture.get_Handle(&handle));
  // Handles have 32 significant bits, sign-extended.
  const auto number = static_cast<LONG_PTR>(static_cast<LONG>(handle));
  const auto bitmap = reinterpret_cast<HBITMAP>(number);  // NOLINT(performance-no-int-to-ptr): OLE's type for it
  return QImage::fromHBITMAP(bitmap).convertToFormat(QImage::Format_RGB32);
}

}  // namespace orvalis
