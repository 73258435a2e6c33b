// What the update controller for macOS uses of the update framework, declared as in AppKit/AppKit.h beside this.
#pragma once

#import <AppKit/AppKit.h>

@interface SPUUpdater : NSObject
@property(readonly) NSURL* feedURL;
@property BOOL automaticallyChecksForUpdates;
@end

@interface SPUStandardUpdaterController : NSObject
@property(readonly) SPUUpdater* updater;
- (instancetype)initWithStartingUpdater:(BOOL)starts
                        updaterDelegate:(id)delegate
                     userDriverDelegate:(id)driver;
- (void)checkForUpdates:(id)sender;
@end
