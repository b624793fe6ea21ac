#include "desktop/symbol_images.h"

#import <AppKit/AppKit.h>

#include <algorithm>

namespace stowlark {

QImage systemSymbol(const QString &name, int side) {
    @autoreleasepool {
        NSImage *symbol = [NSImage imageWithSystemSymbolName:name.toNSString() accessibilityDescription:nil];
        const NSFontWeight weight = name == u"xmark" ? NSFontWeightBlack : NSFontWeightRegular;
        auto *style = [NSImageSymbolConfiguration configurationWithPointSize:side * 0.75 weight:weight];
        symbol = [symbol imageWithSymbolConfiguration:style];
        if (symbol == nil) {
            return {};
        }
        QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        const auto pixels = static_cast<size_t>(side);
        const auto layout = static_cast<uint32_t>(kCGImageAlphaPremultipliedFirst) |
                            static_cast<uint32_t>(kCGBitmapByteOrder32Host);
        CGColorSpaceRef space = CGColorSpaceCreateWithName(kCGColorSpaceSRGB);
        CGContextRef context = CGBitmapContextCreate(
            image.bits(), pixels, pixels, 8, static_cast<size_t>(image.bytesPerLine()), space, layout);
        CGColorSpaceRelease(space);

        const CGFloat scale = std::min(1.0, side / std::max(symbol.size.width, symbol.size.height));
        const CGFloat width = symbol.size.width * scale;
        const CGFloat height = symbol.size.height * scale;
        [NSGraphicsContext saveGraphicsState];
        NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithCGContext:context
                                                                                   flipped:NO];
        [symbol drawInRect:NSMakeRect((side - width) / 2, (side - height) / 2, width, height)
                  fromRect:NSZeroRect
                 operation:NSCompositingOperationSourceOver
                  fraction:1];
        [NSGraphicsContext restoreGraphicsState];
        CGContextRelease(context);
        return image;
    }
}

} // namespace stowlark
