# fish completion for veldrin(1)

# Folders, and files with one of these endings.
function __veldrin_files
    __fish_complete_path (commandline -ct) | string match -eir '(?:/|\.(?:'$argv[1]'))(?:\t|$)'
end

set -l music 'aac|ac3|aif|aifc|aiff|amr|ape|au|dts|flac|it|m4a|m4b|mka|mod|mp2|mp3|mpc|oga|ogg' \
    'opus|s3m|spx|tta|wav|wma|wv|xm|m3u|m3u8|pls|xspf|cue'

complete -c veldrin -f
complete -c veldrin -n 'not __fish_contains_opt status' -a "(__veldrin_files '"(string join '|' $music)"')"
complete -c veldrin -n '__fish_contains_opt status' -a json -d 'The same as JSON'

complete -c veldrin -l add -d 'Join the list instead of replacing it'
complete -c veldrin -l flat -d 'Take folders without those below them'
complete -c veldrin -l no-window -d 'Play in the terminal'
complete -c veldrin -l notify -d 'Tell of each item while hidden in the tray'
complete -c veldrin -l scale -x -a '1 1.25 1.5 1.75 2 2.5 3 3.5 4' -d 'Size of the window'
complete -c veldrin -l dir -x -a '(__fish_complete_directories)' -d 'Keep settings and playlist there'
complete -c veldrin -l output -r -f -a 'auto null file:' -d 'Where the sound goes'
complete -c veldrin -l loudness -x -a 'off track album' -d 'Play all equally loud, by their tags'
complete -c veldrin -l lyrics -x -a 'http:// https://' -d 'Ask this lyrics service'
complete -c veldrin -l lyrics-online -d 'Look for missing lyrics at lrclib.net'
complete -c veldrin -l play -d 'Have the running veldrin play'
complete -c veldrin -l pause -d 'Have it pause'
complete -c veldrin -l play-pause -d 'Have it pause, or go on'
complete -c veldrin -l stop -d 'Have it stop'
complete -c veldrin -l next -d 'Have it play the next item'
complete -c veldrin -l previous -d 'Have it play the previous item'
complete -c veldrin -l volume -x -a '0 25 50 75 100 +5 -5' -d 'Set its volume'
complete -c veldrin -l seek -x -a '0 +10 -10' -d 'Go there in what it plays'
complete -c veldrin -l command -x -d 'Do a command of its menu' -a "
    kPRdm\t'Random playback' kPRpP\t'Repeat whole playlist' kPRpI\t'Repeat single item'
    kPMA\t'Manual advance' kPPAS\t'Play at startup'
    kAL\t'File browser' kRS\t'Remove selected' kRCS\t'Crop selected' kRD\t'Remove dead entries'
    kRAll\t'Clear all entries' kSeA\t'Select all' kSeN\t'Select none' kSeI\t'Invert selection'
    kTMst\t'Always on top' kHIS\t'Minimize in systray' kAsF\t'Associate files' kSk1\t'The first skin'
    kPkLy\tLyrics kPkEFX\t'Audio effects' kPkNFO\t'Item information' kPkSh\tSearch
    kAbt\t'User guide' kExt\tEnd"
complete -c veldrin -l status -d 'Print how it stands'
complete -c veldrin -l quit -d 'End the running veldrin'
complete -c veldrin -l export -r -f -a '(__veldrin_files m3u8)' -d 'Write the list for other players'
complete -c veldrin -l help -d 'Print the options'
complete -c veldrin -l version -d 'Print the version'
