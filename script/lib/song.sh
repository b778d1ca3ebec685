# song: for the other scripts to source; the recording of the demo and how it is mastered.

# A metal song under the MIT licence, 29 MB; nothing depends on the package and it on nothing.
song_package=fretsonfire-songs-sectoid
song='/usr/share/games/fretsonfire/data/songs/sectoid/Metal madness/song.ogg'

song_moment=71 # seconds: everything plays
song_settings=() # the arguments of the renderer
while IFS= read -r setting; do song_settings+=(--set "$setting"); done <script/lib/song-settings.txt
