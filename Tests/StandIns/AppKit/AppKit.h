// What the files for macOS use of its frameworks, declared for a compiler that has none of them. Nothing links with this.
#pragma once

typedef bool BOOL;
#define YES true
#define NO false
#define nil nullptr

@class NSString;

__attribute__((objc_root_class))
@interface NSObject
+ (instancetype)alloc;
- (instancetype)init;
@end

@interface NSURL : NSObject
+ (NSURL*)fileURLWithFileSystemRepresentation:(const char*)path
                                  isDirectory:(BOOL)isDirectory
                                relativeToURL:(NSURL*)base;
@end

@interface NSArray<Element> : NSObject
@end

@interface NSMutableArray<Element> : NSArray <Element>
+ (instancetype)array;
- (void)addObject:(Element)object;
@end

@interface NSWorkspace : NSObject
+ (NSWorkspace*)sharedWorkspace;
- (void)activateFileViewerSelectingURLs:(NSArray<NSURL*>*)addresses;
@end
