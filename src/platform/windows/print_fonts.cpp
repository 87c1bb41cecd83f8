#include <windows.h>

/// A font engine that this Qt is built without, because it needs parts of DirectWrite that the compiler's headers lack.
/// Qt's printing names it all the same; there is never an object of it to ask.
class QWindowsFontEngineDirectWrite {
 public:
  HFONT createHFONT() const;
};

HFONT QWindowsFontEngineDirectWrite::createHFONT() const { return nullptr; }
