"""Commands of script/hosts: audio files, session files and comparison. Audio files are stereo, 32-bit float WAV."""

import base64
import os
import re
import shutil
import struct
import sys
import xml.etree.ElementTree as ElementTree
from array import array

FRAME_BYTES = 8
SUPERCLOCK = 282240000  # ticks per second of Ardour 7's time line
LARGEST_DIFFERENCE = 2.0**-22  # two units in the last place of a sample just below full scale


def read(path):
    with open(path, "rb") as file:
        content = file.read()
    at, format_ok = 12, False
    while at + 8 <= len(content):
        name, size = content[at : at + 4], struct.unpack_from("<I", content, at + 4)[0]
        if name == b"fmt ":
            tag, channels, _, _, _, bits = struct.unpack_from("<HHIIHH", content, at + 8)
            format_ok = channels == 2 and bits == 32 and tag in (3, 0xFFFE)
        if name == b"data":
            if not format_ok:
                sys.exit(f"{path} is not a stereo 32-bit float WAV file")
            return content[at + 8 : at + 8 + size]
        at += 8 + size + (size & 1)
    sys.exit(f"{path} contains no samples")


def write(path, samples, rate=44100):
    head = struct.pack("<4sIHHIIHH", b"fmt ", 16, 3, 2, rate, rate * FRAME_BYTES, FRAME_BYTES, 32)
    head += struct.pack("<4sII", b"fact", 4, len(samples) // FRAME_BYTES) + struct.pack("<4sI", b"data", len(samples))
    with open(path, "wb") as file:
        file.write(b"RIFF" + struct.pack("<I", 4 + len(head) + len(samples)) + b"WAVE" + head + samples)


def cut(source, target, start, frames, silence, tail):
    first = int(start) * FRAME_BYTES
    piece = read(source)[first : first + int(frames) * FRAME_BYTES]
    write(target, bytes(int(silence) * FRAME_BYTES) + piece + bytes(int(tail) * FRAME_BYTES))


def lead(source, target, frames):
    write(target, bytes(int(frames) * FRAME_BYTES) + read(source))


def drop(source, target, frames, keep=None):
    samples = read(source)[int(frames) * FRAME_BYTES :]
    write(target, samples[: int(keep) * FRAME_BYTES] if keep else samples)


def session(path, recording, chunk, rate):
    """Adds the recording to the session's only track and the chunk to its effect, in the format that Ardour saves."""
    frames = len(read(recording)) // FRAME_BYTES
    folder = os.path.dirname(path)
    shutil.copy(recording, os.path.join(folder, "interchange", os.path.basename(folder), "audiofiles", "input.wav"))
    end = f"a{frames * SUPERCLOCK // int(rate)}"
    tree = ElementTree.parse(path)
    root = tree.getroot()
    for channel in ("0", "1"):
        ElementTree.SubElement(root.find("Sources"), "Source", {
            "name": "input.wav", "type": "audio", "flags": "", "id": f"900{channel}", "channel": channel, "origin": "",
            "take-id": "", "natural-position": "a0"})
    for parent, number, whole in ((root.find("Regions"), "9002", "1"), (root.find("Playlists/Playlist"), "9003", "0")):
        ElementTree.SubElement(parent, "Region", {
            "name": "input", "type": "audio", "id": number, "whole-file": whole, "start": "a0", "position": "a0",
            "length": f"{end}@a0", "import": "0", "external": "0", "fade-before-fx": "0",
            "channels": "2", "source-0": "9000", "source-1": "9001", "master-source-0": "9000",
            "master-source-1": "9001", "opaque": "1", "muted": "0", "scale-amplitude": "1", "envelope-active": "0",
            "fade-in-active": "0", "fade-out-active": "0", "default-fade-in": "0", "default-fade-out": "0"})
    ElementTree.SubElement(root.find("Locations"), "Location", {
        "id": "9004", "name": "session", "start": "a0", "end": end, "flags": "IsSessionRange", "locked": "0",
        "timestamp": "0"})
    connect(root)
    root.set("id-counter", "9999")
    with open(chunk, "rb") as file:
        root.find(".//lxvst/chunk").text = base64.b64encode(file.read()).decode()
    tree.write(path, encoding="UTF-8", xml_declaration=True)


def connect(root):
    """Connects the track to the master bus and disconnects its input. Ardour does so late or not at all."""
    for route, direction, others in (("song", "Input", None), ("song", "Output", "Master/audio_in"),
                                     ("Master", "Input", "song/audio_out")):
        ports = root.findall(f"Routes/Route[@name='{route}']/IO[@direction='{direction}']/Port[@type='audio']")
        if len(ports) != 2:
            sys.exit(f"{route} has {len(ports)} audio {direction.lower()} ports, expected 2")
        for number, port in enumerate(ports, 1):
            for old in port.findall("Connection"):
                port.remove(old)
            if others:
                ElementTree.SubElement(port, "Connection", {"other": f"{others} {number}"})


def version():
    """Returns the version number that the release build reports to hosts."""
    with open("build/release/plugin/Version.h") as file:
        return re.search(r"VERSION_NUMBER (\d+)", file.read())[1]


def audacity_settings(path, chunk):
    """Stores the chunk as Audacity's current settings of the effect."""
    key = base64.b64encode(b"Effect_VST_Veloxon, Inc._Tessarine").decode().replace("=", "\\=")
    with open(chunk, "rb") as file:
        text = base64.b64encode(file.read()).decode()
    values = f"UniqueID=1366061684\nVersion={version()}\nElements=39\nChunk={text}\n"
    with open(path, "w") as file:
        file.write("pluginsettingsversion=1.0\n")
        for group in ("FactoryDefaults", "CurrentSettings"):
            file.write(f"[pluginsettings/base64\\:{key}/private/{group}]\n{values}Initialized=1\n")


def audacity(to_path, from_path, source, target):
    with open(to_path, "wb", buffering=0) as commands, open(from_path) as answers:
        for command in (f'Import2: Filename="{source}"', "SelectAll:", "Tessarine:",
                        f'Export2: Filename="{target}" NumChannels=2'):
            commands.write(command.encode() + b"\n")
            answer = ""
            while "BatchCommand finished" not in answer:
                line = answers.readline()
                if not line:
                    sys.exit(f"Audacity closed its pipe during: {command}")
                answer += line
            answers.readline()
            print(command, answer, sep="\n")
            if "finished: OK" not in answer:
                sys.exit(1)


def lmms_project(path, library, recording, chunk):
    with open(chunk, "rb") as file:
        text = base64.b64encode(file.read()).decode()
    with open(path, "w") as file:
        file.write(f"""<?xml version="1.0"?>
<!DOCTYPE lmms-project>
<lmms-project creator="LMMS" version="1.0" type="song" creatorversion="1.2.2">
  <head timesig_numerator="4" timesig_denominator="4" bpm="120" mastervol="100" masterpitch="0"/>
  <song>
    <trackcontainer type="song" visible="1">
      <track type="2" name="song" muted="0" solo="0">
        <sampletrack vol="100" pan="0" fxch="0">
          <fxchain enabled="1" numofeffects="1">
            <effect name="vsteffect" on="1" wet="1" autoquit="1" gate="0">
              <vsteffectcontrols plugin="{library}" guivisible="0" numparams="0" chunk="{text}"/>
              <key><attribute name="file" value="{library}"/></key>
            </effect>
          </fxchain>
        </sampletrack>
        <sampletco pos="0" len="4224" muted="0" src="{recording}"/>
      </track>
    </trackcontainer>
    <fxmixer visible="1">
      <fxchannel num="0" name="Master" volume="1" muted="0" soloed="0"><fxchain enabled="0" numofeffects="0"/></fxchannel>
    </fxmixer>
  </song>
</lmms-project>
""")


def compare(source, expected, found, silence, tail):
    """Prints the frames of the recording, how many differ, and the largest difference in it and in the silence around it.

    Allows LARGEST_DIFFERENCE: the denormal guard's square wave starts with the effect's first block, so a host that
    first plays silence shifts its phase.
    """
    before, right, left = (array("f", read(path)) for path in (source, expected, found))
    if len(left) != len(right):
        sys.exit(f"{found} is {len(left) // 2} frames long, {expected} {len(right) // 2}")
    if max(abs(a - b) for a, b in zip(before, right)) < 0.1:
        sys.exit(f"{expected} equals the input, so the comparison is meaningless")
    differences = [max(abs(left[at] - right[at]), abs(left[at + 1] - right[at + 1])) for at in range(0, len(left), 2)]
    first, last = int(silence), len(differences) - int(tail)
    recording, around = differences[first:last], differences[:first] + differences[last:]
    print(len(recording), sum(1 for value in recording if value), f"{max(recording):.2g}", f"{max(around):.2g}")
    if not all(value <= LARGEST_DIFFERENCE for value in differences):
        sys.exit(f"{found} differs from {expected} by more than {LARGEST_DIFFERENCE:.2g}")


if __name__ == "__main__":
    globals()[sys.argv[1].replace("-", "_")](*sys.argv[2:])
