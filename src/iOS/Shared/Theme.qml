// SPDX-License-Identifier: GPL-3.0-or-later
pragma Singleton
import QtQuick
import orvalia.Shared

/// Colours, text styles, measures, shadows and motion of every screen, named by what they are for. Lengths are logical
/// pixels, durations milliseconds. It follows the desktop's scheme live. The colours of magnitudes are not here: they
/// are MagnitudeCategory.color; nor are those that base map, marker layer and ripples paint in C++.
QtObject {
    id: root

    readonly property bool dark: DesktopScheme.dark
    /// Only fades of `quick` remain.
    readonly property bool reducedMotion: DesktopScheme.reducedMotion

    // Grounds.
    readonly property color window: dark ? "#14181B" : "#FCFDFD"
    readonly property color sidebar: dark ? "#1B2024" : "#EFF2F4"
    readonly property color surface: dark ? "#14181B" : "#F2F5F6"
    readonly property color raised: dark ? "#1F252A" : "#FFFFFF"
    readonly property color popover: dark ? "#252C31" : "#FFFFFF"
    readonly property color sheet: dark ? "#1A1F23" : "#F4F6F7"
    readonly property color control: dark ? "#2B3238" : "#FFFFFF"
    readonly property color controlBorder: dark ? "#24E8EDF0" : "#291A2228"
    readonly property color segmentThumb: dark ? "#4A545B" : "#FFFFFF"
    readonly property color switchKnob: dark ? "#F4F7F8" : "#FFFFFF"

    // Text and icons.
    readonly property color primary: dark ? "#E8EDF0" : "#1A2228"
    readonly property color secondary: dark ? "#A3B3BE" : "#4A5E6C"
    readonly property color tertiary: dark ? "#7B8993" : "#74858F"

    // The voice of what is chosen, on, and next.
    readonly property color accent: dark ? "#56B6D5" : "#0E6C8C"
    readonly property color accentHover: dark ? "#6BC3DF" : "#0B607D"
    readonly property color accentPressed: dark ? "#45A2C1" : "#094F68"
    // Not "onAccent": QML takes what begins so for the handler of a signal.
    readonly property color textOnAccent: dark ? "#05202B" : "#FFFFFF"
    readonly property color focusRing: dark ? "#56B6D5" : "#0E6C8C"

    // Tints laid over a ground.
    readonly property color selection: dark ? "#3356B6D5" : "#210E6C8C"
    readonly property color selectionInactive: dark ? "#26A3B3BE" : "#1F4A5E6C"
    readonly property color hover: dark ? "#0EE8EDF0" : "#0D1A2228"
    readonly property color pressed: dark ? "#1AE8EDF0" : "#171A2228"

    // Lines and fills.
    readonly property color divider: dark ? "#1CE8EDF0" : "#1C1A2228"
    readonly property color systemFill: dark ? "#2BA3B3BE" : "#214A5E6C"
    readonly property color systemFillStrong: dark ? "#3DA3B3BE" : "#334A5E6C"

    // Meanings.
    readonly property color destructive: dark ? "#FF857C" : "#BF2B27"
    readonly property color warning: dark ? "#FFAC52" : "#A85400"
    readonly property color warningIcon: dark ? "#FFA640" : "#D06800"
    readonly property color success: dark ? "#45C57C" : "#2C9A58"

    // Depth bars.
    readonly property color depthShallow: dark ? "#5C9EF2" : "#2F7BD9"
    readonly property color depthIntermediate: dark ? "#F5A13C" : "#F08C1A"
    readonly property color depthDeep: dark ? "#F2665E" : "#E5453D"

    // Over the map, whose labels would shine through anything thinner: nothing blurs them.
    readonly property color material: dark ? "#F521272C" : "#F5FCFDFD"
    readonly property color barMaterial: dark ? "#F514181B" : "#F5FCFDFD"
    readonly property color scrim: dark ? "#8F040709" : "#5210181E"

    // Written on the ground of the map.
    readonly property color mapFigures: dark ? "#8C9CC4D8" : "#BF3F6C86"
    readonly property color mapInk: dark ? "#D9E7EEF0" : "#D924313A"
    readonly property color mapHalo: dark ? "#A60F212D" : "#A6C9DFEA"
    readonly property color markerLine: "white"

    // Small things.
    readonly property color tipGround: dark ? "#E8EDF0" : "#262E34"
    readonly property color tipText: dark ? "#14181B" : "#F2F5F6"
    readonly property color scrollThumb: dark ? "#57E8EDF0" : "#521A2228"
    readonly property color categoryEdge: dark ? "transparent" : "#29463800"

    // Cards of the statistics screen: translucent, so that they lie on any ground.
    readonly property color card: Qt.alpha(secondary, 0.10)
    readonly property color cardInner: Qt.alpha(secondary, 0.15)
    readonly property color cooldownTrack: Qt.alpha(secondary, 0.30)
    /// Text on a magnitude's colour, in both schemes.
    readonly property color textOnCategory: "#BF000000"
    readonly property color textOnSwatch: "#A6000000"
    /// Over a button in a magnitude's colour under the pointer, and held.
    readonly property color categoryHover: "#0F000000"
    readonly property color categoryPressed: "#1F000000"
    /// Edge of what floats: half a pixel beyond its ground.
    readonly property color floatEdge: dark ? "#21FFFFFF" : "#2410181E"
    readonly property color knobShadow: "#47000000"
    readonly property color thumbShadow: "#1F000000"
    /// Opacity of a control that does not react.
    readonly property real disabledOpacity: 0.45

    // Text.
    readonly property string fontFamily: "Inter"
    readonly property TextStyle title: TextStyle { size: 24; weight: Font.Bold; line: 30; tracking: -0.4 }
    readonly property TextStyle title2: TextStyle { size: 19; weight: Font.DemiBold; line: 24; tracking: -0.25 }
    readonly property TextStyle title3: TextStyle { size: 16; weight: Font.DemiBold; line: 22; tracking: -0.15 }
    readonly property TextStyle headline: TextStyle { size: 14; weight: Font.DemiBold; line: 22; tracking: -0.05 }
    readonly property TextStyle body: TextStyle { size: 14; line: 20 }
    readonly property TextStyle callout: TextStyle { size: 13; line: 18 }
    readonly property TextStyle subheadline: TextStyle { size: 13; line: 18 }
    readonly property TextStyle caption: TextStyle { size: 12; line: 16 }
    readonly property TextStyle caption2: TextStyle { size: 11; line: 14; tracking: 0.05 }
    readonly property TextStyle swatch: TextStyle { size: 9; weight: Font.Bold; line: 11 }

    // Space.
    readonly property real hair: 1
    readonly property real xxs: 2
    readonly property real xs: 4
    readonly property real s: 8
    readonly property real m: 12
    readonly property real l: 16
    readonly property real xl: 20
    readonly property real xxl: 24

    // Corner radii.
    readonly property real radiusCheck: 5
    readonly property real radiusSegment: 6
    readonly property real radiusMenuEntry: 7
    readonly property real radiusControl: 8
    readonly property real radiusZoom: 9
    readonly property real radiusGroup: 10
    readonly property real radiusPopover: 12
    readonly property real radiusSheet: 14
    readonly property real radiusCard: 16

    // Heights.
    readonly property real toolbarHeight: 52
    readonly property real buttonHeight: 32
    readonly property real calloutButtonHeight: 36
    readonly property real pickerHeight: 30
    readonly property real sidebarRowHeight: 34
    readonly property real listRowHeight: 44
    readonly property real sectionHeaderHeight: 36
    readonly property real formRowHeight: 44
    readonly property real menuEntryHeight: 30
    readonly property real loadMoreHeight: 40

    /// A window narrower than this has room for one column only.
    readonly property real compactWidth: 640

    // What reacts, and the icons in it.
    readonly property real hitSize: 32
    readonly property real hitSizeSmall: 28
    readonly property real iconTiny: 12
    readonly property real iconPicker: 14
    readonly property real iconField: 16
    readonly property real iconHead: 18
    readonly property real icon: 20
    readonly property real iconDetail: 22
    readonly property real iconEmpty: 48

    // Focus.
    readonly property real focusWidth: 2
    readonly property real focusGap: 2

    // Shadows: colour, blur and how far down.
    readonly property ShadowStyle shadowControl: ShadowStyle {
        color: root.dark ? "#4D000000" : "#1410181E"; blur: root.dark ? 1 : 1.5; offset: 1
    }
    readonly property ShadowStyle shadowPopover: ShadowStyle {
        color: root.dark ? "#80000000" : "#2910181E"; blur: root.dark ? 28 : 24; offset: root.dark ? 8 : 6
    }
    readonly property ShadowStyle shadowSheet: ShadowStyle {
        color: root.dark ? "#9E000000" : "#4710181E"; blur: root.dark ? 60 : 56; offset: root.dark ? 20 : 18
    }
    readonly property ShadowStyle shadowCallout: ShadowStyle { color: "#40000000"; blur: 16; offset: 0 }

    // Motion: durations, and the curves as cubic Béziers for Easing.BezierSpline.
    readonly property int springSelect: reducedMotion ? 0 : 250
    readonly property int springMarker: reducedMotion ? 0 : 200
    readonly property int easeBar: reducedMotion ? 0 : 400
    readonly property int ripple: 2000
    readonly property int cooldown: 900
    readonly property int standard: reducedMotion ? 0 : 350
    readonly property int quick: 120
    readonly property int popIn: reducedMotion ? quick : 140
    readonly property int popOut: reducedMotion ? quick : 100
    readonly property list<real> springCurve: [0.2, 0.9, 0.25, 1.06, 1, 1]
    readonly property list<real> easeOutCurve: [0, 0, 0.58, 1, 1, 1]
    readonly property list<real> easeInOutCurve: [0.42, 0, 0.58, 1, 1, 1]
    /// Scale from which popovers, menus and sheets come.
    readonly property real popScale: reducedMotion ? 1 : 0.97
    /// How far a screen slides when it is pushed or popped.
    readonly property real slide: reducedMotion ? 0 : 24
}
