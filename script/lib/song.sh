# song: for the other scripts to source; the song of script/demo and its settings.

# A metal song under the MIT licence; a 29 MB package without dependencies.
song_package=fretsonfire-songs-sectoid
song='/usr/share/games/fretsonfire/data/songs/sectoid/Metal madness/song.ogg'

song_moment=71 # in seconds; all instruments play
song_settings=() # arguments of the renderer
while IFS= read -r setting; do song_settings+=(--set "$setting"); done <script/lib/song-settings.txt
