# song: for the other scripts to source; the recording of the demo and how it is mastered.

# A metal song under the MIT licence, 29 MB; nothing depends on the package and it on nothing.
song_package=fretsonfire-songs-sectoid
song='/usr/share/games/fretsonfire/data/songs/sectoid/Metal madness/song.ogg'

song_moment=71 # seconds: everything plays
setting=(
    'Crossover Low Cutoff=110'     'Crossover Mid Cutoff=1200'    'Crossover High Cutoff=7000'
    'Band 1 Comp Threshold=-20'    'Band 1 Ratio=3'               'Band 1 Attack=30'
    'Band 1 Release=180'           'Band 1 Gain=4'
    'Band 2 Comp Threshold=-16'    'Band 2 Ratio=2'               'Band 2 Attack=20'
    'Band 2 Release=150'           'Band 2 Gain=2.5'
    'Band 3 Comp Threshold=-20'    'Band 3 Ratio=2'               'Band 3 Attack=10'
    'Band 3 Release=120'           'Band 3 Gain=3'
    'Band 4 Comp Threshold=-30'    'Band 4 Ratio=2'               'Band 4 Attack=5'
    'Band 4 Release=80'            'Band 4 Gain=4'
    'Limiter Threshold=-3'         'Limiter Margin=-1'            'Limiter Brickwall Mode=on'
    'Limiter Release=120'
)
song_settings=()
for value in "${setting[@]}"; do song_settings+=(--set "$value"); done
