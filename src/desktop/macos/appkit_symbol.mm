#include "desktop/macos/appkit_symbol.h"

#import <AppKit/AppKit.h>

namespace stowlark::appkit {
namespace {

NSImage *symbolNamed(const char *name, SymbolWeight weight, int side) {
    NSImage *symbol = [NSImage imageWithSystemSymbolName:@(name) accessibilityDescription:nil];
    NSImageSymbolConfiguration *style = [NSImageSymbolConfiguration
        configurationWithPointSize:side * 0.75
                            weight:weight == SymbolWeight::black ? NSFontWeightBlack : NSFontWeightRegular];
    return [symbol imageWithSymbolConfiguration:style];
}

CGContextRef contextOver(unsigned char *pixels, size_t side) {
    const auto layout = static_cast<uint32_t>(kCGImageAlphaPremultipliedFirst) |
                        static_cast<uint32_t>(kCGBitmapByteOrder32Host);
    CGColorSpaceRef space = CGColorSpaceCreateWithName(kCGColorSpaceSRGB);
    CGContextRef context = CGBitmapContextCreate(pixels, side, side, 8, side * 4, space, layout);
    CGColorSpaceRelease(space);
    return context;
}

/// In the middle of the square, smaller where it would not fit.
NSRect placeOf(NSImage *symbol, CGFloat side) {
    const NSSize size = symbol.size;
    const CGFloat longest = size.width > size.height ? size.width : size.height;
    const CGFloat scale = longest > side ? side / longest : 1;
    return NSMakeRect((side - size.width * scale) / 2, (side - size.height * scale) / 2, size.width * scale,
                      size.height * scale);
}

} // namespace

bool drawSymbol(const char *name, SymbolWeight weight, int side, unsigned char *pixels) {
    @autoreleasepool {
        NSImage *symbol = symbolNamed(name, weight, side);
        CGContextRef context = symbol == nil ? nullptr : contextOver(pixels, static_cast<size_t>(side));
        if (context == nullptr) {
            return false;
        }
        [NSGraphicsContext saveGraphicsState];
        NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithCGContext:context
                                                                                   flipped:NO];
        [symbol drawInRect:placeOf(symbol, side)
                  fromRect:NSZeroRect
                 operation:NSCompositingOperationSourceOver
                  fraction:1];
        [NSGraphicsContext restoreGraphicsState];
        CGContextRelease(context);
        return true;
    }
}

} // namespace stowlark::appkit
