#include "desktop/macos/appkit_panels.h"

#import <AppKit/AppKit.h>
#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

namespace stowlark::appkit {
namespace {

/// Nil if it is minimized or hidden.
NSWindow *windowToCover() {
    if (NSApp.mainWindow != nil) {
        return NSApp.mainWindow;
    }
    for (NSWindow *window in NSApp.windows) { // another application is active
        if (window.visible && window.canBecomeMainWindow) {
            return window;
        }
    }
    return nil;
}

NSString *lines(NSArray<NSURL *> *urls) {
    NSMutableArray<NSString *> *result = [NSMutableArray array];
    for (NSURL *url in urls) {
        [result addObject:url.absoluteString];
    }
    return [result componentsJoinedByString:@"\n"];
}

} // namespace

void showOpenPanel(const OpenPanel &options, TakeUrls take, void *context) {
    @autoreleasepool {
        NSOpenPanel *panel = [NSOpenPanel openPanel];
        panel.canChooseFiles = options.choosesFiles;
        panel.canChooseDirectories = options.choosesFolders;
        panel.allowsMultipleSelection = options.choosesSeveral;
        if (options.choosesArchives) {
            panel.allowedContentTypes = @[ UTTypeZIP, UTTypeGZIP, UTTypeData ];
        }
        panel.message = @(options.message);
        panel.prompt = @(options.prompt);
        if (options.folder != nullptr) {
            panel.directoryURL = [NSURL URLWithString:@(options.folder)];
        }
        void (^ended)(NSModalResponse) = ^(NSModalResponse response) {
          take(context, response == NSModalResponseOK ? lines(panel.URLs).UTF8String : "");
        };
        NSWindow *window = windowToCover();
        if (window != nil) {
            [panel beginSheetModalForWindow:window completionHandler:ended];
        } else {
            [panel beginWithCompletionHandler:ended];
        }
    }
}

void showAlert(const char *title, const char *message, int style, void (*done)(void *context),
               void *context) {
    @autoreleasepool {
        NSAlert *alert = [[NSAlert alloc] init];
        alert.messageText = @(title);
        alert.informativeText = @(message);
        alert.alertStyle = static_cast<NSAlertStyle>(style);
        [alert addButtonWithTitle:@"OK"];
        NSWindow *window = windowToCover();
        if (window != nil) {
            [alert beginSheetModalForWindow:window
                          completionHandler:^(NSModalResponse /*response*/) {
                            done(context);
                          }];
        } else {
            [alert runModal];
            done(context);
        }
    }
}

} // namespace stowlark::appkit
