#include "tools/selftest/utility/NativeSide.h"

#include "platform/macos/CFText.h"
#include "platform/macos/CoreMIDIDevices.h"

#include <QWidget>

#import <AppKit/AppKit.h>
#import <CoreMIDI/CoreMIDI.h>

#include <map>

namespace kestrel::selftest {

namespace {
std::string nameOf(MIDIEndpointRef endpoint)
{
    CFHolder<CFStringRef> name;
    if (MIDIObjectGetStringProperty(endpoint, kMIDIPropertyName, name.receive()) != noErr || !name)
        return {};
    return CFText::toUtf8(name.get()).value_or("");
}

// The number of the pair in "ZENTA midi_5" or "ZENTA midi_5_in"; 0 for endpoints of others.
int pairOf(const std::string& name)
{
    constexpr std::string_view Start = "ZENTA midi_";
    return name.starts_with(Start) ? std::atoi(name.c_str() + Start.size()) : 0;
}

constexpr double LeastPictureHeight = 16; // points

const char* yesOrNo(bool holds)
{
    return holds ? "yes" : "no";
}

// Counts the pixels that have the colour of the bird while the link is alive.
bool looksOnline(NSImage* image)
{
    NSData* const data = image.TIFFRepresentation;
    NSBitmapImageRep* const pixels = data ? [NSBitmapImageRep imageRepWithData:data] : nil;
    int count = 0;
    for (NSInteger y = 0; y < pixels.pixelsHigh; ++y) {
        for (NSInteger x = 0; x < pixels.pixelsWide; ++x) {
            NSColor* const colour =
                [[pixels colorAtX:x y:y] colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
            if (colour.alphaComponent > 0.5 && colour.greenComponent > colour.redComponent + 0.2
                && colour.blueComponent > colour.redComponent + 0.2)
                ++count;
        }
    }
    return count > 20;
}

NSStatusBarButton* statusButton(NSView* view)
{
    if ([view isKindOfClass:NSStatusBarButton.class])
        return static_cast<NSStatusBarButton*>(view);
    for (NSView* child in view.subviews) {
        if (NSStatusBarButton* const found = statusButton(child))
            return found;
    }
    return nil;
}

// AppKit counts from the lower left corner of the first screen, Quartz from its upper left.
std::string areaOf(NSRect frame)
{
    const double top = NSMaxY(NSScreen.screens.firstObject.frame) - NSMaxY(frame);
    return [NSString stringWithFormat:@"%.0f,%.0f,%.0f,%.0f", NSMinX(frame), top, NSWidth(frame),
                     NSHeight(frame)]
        .UTF8String;
}
} // namespace

std::vector<MIDIEntity> simulatedConsole()
{
    std::map<int, MIDIEntity> pairs;
    for (ItemCount i = 0; i < MIDIGetNumberOfSources(); ++i) {
        const MIDIEndpointRef source = MIDIGetSource(i);
        if (const int pair = pairOf(nameOf(source)))
            pairs[pair].sources.push_back({ source, CoreMIDIDevices::uniqueIDOf(source) });
    }
    for (ItemCount i = 0; i < MIDIGetNumberOfDestinations(); ++i) {
        const MIDIEndpointRef destination = MIDIGetDestination(i);
        if (const int pair = pairOf(nameOf(destination)))
            pairs[pair].destinations.push_back(destination);
    }
    std::vector<MIDIEntity> entities;
    for (auto& [number, pair] : pairs)
        entities.push_back(std::move(pair));
    return entities;
}

std::string nativeFacts(const QWidget& widget)
{
    @autoreleasepool {
        NSWindow* const window
            = ((__bridge NSView*)reinterpret_cast<void*>(widget.internalWinId())).window;
        const auto spaces = window.collectionBehavior;
        return [NSString
            stringWithFormat:@" class=%@ panel=%s nonactivating=%s level=%ld spaces=%s canhide=%s "
                             @"hidesondeactivate=%s key=%s onscreen=%s sheet=%@ number=%ld",
            NSStringFromClass(window.class), yesOrNo([window isKindOfClass:NSPanel.class]),
            yesOrNo((window.styleMask & NSWindowStyleMaskNonactivatingPanel) != 0),
            static_cast<long>(window.level),
            yesOrNo((spaces & NSWindowCollectionBehaviorCanJoinAllSpaces) != 0
                && (spaces & NSWindowCollectionBehaviorFullScreenAuxiliary) != 0),
            yesOrNo(window.canHide), yesOrNo(window.hidesOnDeactivate), yesOrNo(window.keyWindow),
            yesOrNo(window.visible),
            window.attachedSheet ? NSStringFromClass(window.attachedSheet.class) : @"none",
            static_cast<long>(window.windowNumber)]
            .UTF8String;
    }
}

std::string statusItemFacts()
{
    @autoreleasepool {
        for (NSWindow* window in NSApp.windows) {
            NSStatusBarButton* const button = statusButton(window.contentView);
            if (!button)
                continue;
            NSMutableArray<NSString*>* const sizes = [NSMutableArray array];
            for (NSImageRep* each in button.image.representations)
                [sizes addObject:[NSString stringWithFormat:@"%ldx%ld",
                                           static_cast<long>(each.pixelsWide),
                                           static_cast<long>(each.pixelsHigh)]];
            return " area=" + areaOf(window.frame)
                + " pictures=" + [sizes componentsJoinedByString:@","].UTF8String + " fits="
                + yesOrNo(button.image.size.height <= NSStatusBar.systemStatusBar.thickness
                    && button.image.size.height >= LeastPictureHeight)
                + " online=" + yesOrNo(looksOnline(button.image));
        }
        return {};
    }
}

void setApplicationHidden(bool isHidden)
{
    if (isHidden)
        [NSApp hide:nil];
    else
        [NSApp unhideWithoutActivation];
}

} // namespace kestrel::selftest
