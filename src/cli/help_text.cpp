// The manual page of lumidot-cli, printed by --help.
#include "cli/cli_options.h"

namespace lumidot::cli {

QString HelpText() {
    return QStringLiteral(R"(NAME
    lumidot-cli - compose and explain the LCD messages of a Roland SC-88Pro

SYNOPSIS
    lumidot-cli [OPTIONS] text TEXT
    lumidot-cli [OPTIONS] display PAGE|none
    lumidot-cli [OPTIONS] store PAGE PICTURE
    lumidot-cli [OPTIONS] describe [FILE|-]
    lumidot-cli [OPTIONS] repair IN OUT
    lumidot-cli ports [--api alsa|jack]
    lumidot-cli send [--api alsa|jack] [--port NAME] [--gap MS] FILE|-
    lumidot-cli --help | --version

DESCRIPTION
    Writes the GS System Exclusive messages that put a line of text or a
    16 x 16 dot picture on the module's LCD, as hex text, as a .syx file or as
    a Standard MIDI File, explains the messages in such files in the same
    words as Lumidot's "Read from clipboard", and sends them to the module
    through a MIDI output port.

COMMANDS
    text TEXT
        The message that shows TEXT (at most 32 characters) at the top of
        the LCD. Its characters are written in the code page of your locale.

    display PAGE|none
        The message that shows stored page PAGE (1 to 10), or none to go back
        to the volume meters.

    store PAGE PICTURE
        The message that stores a picture in page PAGE (1 to 10). PICTURE is
        a file (- for standard input) of 16 lines of 16 characters, # for a
        dot that is on and . for one that is off, top line first, or an image
        file (PNG, BMP, GIF, JPEG, TIFF, PBM, PGM, PPM, XPM, ICO and others;
        the first frame of an animation). An image is converted as Lumidot's
        "Import picture" converts it: scaled to fit the 16 x 16 dots with
        margins, its dark pixels on and its light and transparent ones off.

    describe [FILE|-]
        Explains every message of FILE, one numbered line each: a .syx file
        (each line gives the message's byte offset), a MIDI file (its time
        mm:ss.mmm and track, counting from 1) or hex text laid out as the
        layout options say. Without FILE, or with -, reads standard input.
        Damage in the file is reported on standard error with its offset.

    repair IN OUT
        Copies the .syx or MIDI file IN to OUT with every wrong checksum of a
        Roland GS data-set message put right, and lists each one changed.
        Nothing else in the file changes.

    ports
        Lists the MIDI output ports, one a line, as send takes their names.

    send FILE|-
        Sends every message of FILE (- for standard input) to a MIDI output
        port, in order, and ends when the last one is out: a .syx file, a MIDI
        file (each message at its time in the file) or hex text laid out as
        the layout options say. After each message comes a pause of at least
        --gap milliseconds, which the module needs to take it in; a message
        of a MIDI file goes at its time or after that pause, whichever is
        later. Prints how many messages went to which port.

OPTIONS
    --layout PREFIX,SUFFIX,SEPARATOR
        How hex text is laid out, as in Lumidot's window: PREFIX before each
        byte, SUFFIX after it, SEPARATOR between two bytes (the first two
        commas divide, so the separator may be a comma). At most 5
        characters each. The default is no prefix, no suffix and one space.

    --prefix TEXT, --suffix TEXT, --separator TEXT
        One part of the layout.

    -o FILE, --output FILE
        Writes the message of text, display or store to FILE instead of
        printing it: a .syx file for a name ending in .syx, a MIDI file
        (format 0, the message at the start) for .mid or .midi, hex text for
        any other name.

    --threshold N
        For an image in store: a pixel is on when its lightness (0 black to
        255 white) is below N. 0 leaves every dot off, 255 turns every dot
        on. The default is 128.

    --dither
        For an image in store: shades of grey become patterns of dots, by
        error diffusion, instead of being cut at the threshold.

    --invert
        For an image in store: light pixels are on instead of dark ones (for
        white on black). Transparent pixels stay off.

    --json
        describe and repair print one JSON document instead of lines.

    --api alsa|jack
        The MIDI system of ports and send: the ALSA sequencer or a JACK
        server. The default is LUMIDOT_MIDI_API, or else ALSA when it can be
        reached and JACK when not.

    --port NAME
        The port send sends to, as ports lists it (ALSA's client and port
        numbers may differ). The default is the port chosen in Lumidot's MIDI
        menu.

    --gap MS
        The least pause after each message send sends, in milliseconds from
        20 to 500. The default is 40.

    -h, --help
        Prints this page.

EXIT STATUS
    0   success.
    1   bad input: a file that cannot be read or is damaged, a picture or
        text that does not fit, an image larger than 100 megapixels. Each
        problem is one line on standard error that says what and where.
        What could be read of a damaged file is still described or
        repaired.
        For ports and send also: no MIDI system, no port of the name given,
        or a port that goes away while messages are sent.
    2   usage error: an unknown command or option, a missing argument.

ENVIRONMENT
    LUMIDOT_MIDI_API
        alsa or jack: the MIDI system when --api does not say.
    LUMIDOT_MIDI_LOG
        A file to which every message sent is added as a line: the moment it
        was handed to the MIDI system (microseconds of the system's
        monotonic clock) and its bytes in hex.

EXAMPLES
    lumidot-cli text "Hello"
    lumidot-cli --layout 0x,,, display 3
    lumidot-cli store 1 heart.txt -o heart.mid
    lumidot-cli --dither store 2 photo.jpg
    lumidot-cli describe song.mid
    lumidot-cli repair song.mid fixed.mid
    lumidot-cli ports
    lumidot-cli send --port "SC-88Pro" heart.syx
)");
}

}  // namespace lumidot::cli
