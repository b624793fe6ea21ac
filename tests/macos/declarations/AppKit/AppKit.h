// The same of AppKit and of what it brings of Core Graphics.
#import <Foundation/Foundation.h>

struct NSPoint {
    CGFloat x, y;
};
struct NSSize {
    CGFloat width, height;
};
struct NSRect {
    NSPoint origin;
    NSSize size;
};
extern "C" const NSRect NSZeroRect;
extern "C" NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height);

typedef struct CGContext *CGContextRef;
typedef struct CGColorSpace *CGColorSpaceRef;
typedef const struct __CFString *CFStringRef;
enum CGImageAlphaInfo : uint32_t { kCGImageAlphaPremultipliedFirst = 2 };
enum CGBitmapInfo : uint32_t { kCGBitmapByteOrder32Little = 2 << 12 };
#define kCGBitmapByteOrder32Host kCGBitmapByteOrder32Little
extern "C" const CFStringRef kCGColorSpaceSRGB;
extern "C" CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef name);
extern "C" void CGColorSpaceRelease(CGColorSpaceRef space);
extern "C" CGContextRef CGBitmapContextCreate(void *data, size_t width, size_t height,
                                              size_t bitsPerComponent, size_t bytesPerRow,
                                              CGColorSpaceRef space, uint32_t bitmapInfo);
extern "C" void CGContextRelease(CGContextRef context);

@class NSWindow;
@interface NSView : NSObject
@property(readonly, weak) NSWindow *window;
@end
typedef NSUInteger NSWindowStyleMask;
enum : NSWindowStyleMask { NSWindowStyleMaskFullSizeContentView = 1 << 15 };
@interface NSWindow : NSObject
@property NSWindowStyleMask styleMask;
@property(readonly) NSRect frame;
@property BOOL titlebarAppearsTransparent STOWLARK_FROM(10.10);
@property(readonly) NSRect contentLayoutRect STOWLARK_FROM(10.10);
@property(readonly, getter=isVisible) BOOL visible;
@property(readonly) BOOL canBecomeMainWindow;
@end

@interface NSApplication : NSObject
@property(strong) id servicesProvider;
@property(readonly, weak) NSWindow *mainWindow;
@property(readonly, copy) NSArray<NSWindow *> *windows;
- (void)activateIgnoringOtherApps:(BOOL)flag;
- (BOOL)sendAction:(SEL)action to:(id)target from:(id)sender;
@end
extern "C" NSApplication *NSApp;

typedef NSString *NSPasteboardType;
extern "C" const NSPasteboardType NSPasteboardTypeFileURL STOWLARK_FROM(10.13);
@interface NSPasteboardItem : NSObject
- (NSData *)dataForType:(NSPasteboardType)type;
@end
@interface NSPasteboard : NSObject
@property(readonly, copy) NSArray<NSPasteboardItem *> *pasteboardItems;
@end

typedef NSInteger NSModalResponse;
static const NSModalResponse NSModalResponseOK = 1;
@class UTType;
@interface NSOpenPanel : NSObject
@property(copy) NSURL *directoryURL;
@property(copy) NSArray<UTType *> *allowedContentTypes STOWLARK_FROM(11.0);
@property(copy) NSString *message;
@property(copy) NSString *prompt;
@property BOOL canChooseFiles;
@property BOOL canChooseDirectories;
@property BOOL allowsMultipleSelection;
@property(readonly, copy) NSArray<NSURL *> *URLs;
+ (NSOpenPanel *)openPanel;
- (void)beginWithCompletionHandler:(void (^)(NSModalResponse))handler;
- (void)beginSheetModalForWindow:(NSWindow *)window completionHandler:(void (^)(NSModalResponse))handler;
@end

enum NSAlertStyle : NSUInteger { NSAlertStyleWarning = 0, NSAlertStyleInformational = 1 };
@interface NSAlert : NSObject
@property(copy) NSString *messageText;
@property(copy) NSString *informativeText;
@property NSAlertStyle alertStyle;
- (id)addButtonWithTitle:(NSString *)title;
- (void)beginSheetModalForWindow:(NSWindow *)window
               completionHandler:(void (^)(NSModalResponse))handler STOWLARK_FROM(10.9);
- (NSModalResponse)runModal;
@end

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace *sharedWorkspace;
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL *> *)urls;
@end

typedef CGFloat NSFontWeight;
extern "C" const NSFontWeight NSFontWeightRegular STOWLARK_FROM(10.11);
extern "C" const NSFontWeight NSFontWeightBlack STOWLARK_FROM(10.11);
enum NSCompositingOperation : NSUInteger { NSCompositingOperationSourceOver = 2 };
STOWLARK_FROM(11.0)
@interface NSImageSymbolConfiguration : NSObject
+ (instancetype)configurationWithPointSize:(CGFloat)size weight:(NSFontWeight)weight;
@end
@interface NSImage : NSObject
@property NSSize size;
+ (instancetype)imageWithSystemSymbolName:(NSString *)name
                 accessibilityDescription:(NSString *)description STOWLARK_FROM(11.0);
- (NSImage *)imageWithSymbolConfiguration:(NSImageSymbolConfiguration *)style STOWLARK_FROM(11.0);
- (void)drawInRect:(NSRect)target
          fromRect:(NSRect)source
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)opacity;
@end
@interface NSGraphicsContext : NSObject
@property(class, strong) NSGraphicsContext *currentContext;
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
+ (NSGraphicsContext *)graphicsContextWithCGContext:(CGContextRef)context
                                            flipped:(BOOL)flipped STOWLARK_FROM(10.10);
@end
