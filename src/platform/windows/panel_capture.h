#pragma once

#include "platform/windows/automation_object.h"

// After windows.h, whose types they use.
#include <ocidl.h>

#include <QImage>

namespace orvalis {

using PicturePtr = ComPtr<IPicture>;

/// A picture of a window with its frame, as it appears on the screen. Throws RunTimeError.
[[nodiscard]] PicturePtr CaptureForm(HWND form);

/// A picture of a part of a window, or of its client area if `client`; in pixels. Throws RunTimeError.
[[nodiscard]] PicturePtr CaptureWindow(HWND window, bool client, int left, int top, int width, int height);

/// A picture of `bitmap` with the colours of `palette`, which may be null. Takes both over and deletes them if it
/// throws RunTimeError.
[[nodiscard]] PicturePtr CreateBitmapPicture(HBITMAP bitmap, HPALETTE palette);

/// The picture as a QImage. Throws RunTimeError.
[[nodiscard]] QImage ImageOf(IPicture& picture);

}  // namespace orvalis
