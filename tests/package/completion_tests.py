#!/usr/bin/env python3
"""What the shells offer behind `veldrin`."""

import os
import re
import shutil
import tempfile
import unittest

import packaged
from packaged import LISTS, heads_of_help, options_in, playable_extensions, read, run, source

BASH = r'''
source /usr/share/bash-completion/bash_completion
source "$1"
COMP_LINE=$2 COMP_POINT=${#2} COMP_WORDS=("${@:3}") COMP_CWORD=$(($# - 3)) COMP_TYPE=9
_veldrin veldrin "${COMP_WORDS[-1]}" "${COMP_WORDS[-2]}"
printf '%s\n' "${COMPREPLY[@]}"
'''

# A shell on a terminal of its own, since its completion runs nowhere else; what it would add to the
# line is printed.
ZSH = r'''
zmodload zsh/zpty
zpty z zsh -f -i
zpty -w z "PS1=; PS2=; fpath=($1 \$fpath); autoload -Uz compinit; compinit -C -d $3"
zpty -w z 'setopt no_beep; zle -C show complete-word shown; bindkey "^T" show'
zpty -w z 'compadd() { local -a found; builtin compadd -O found "$@"; builtin compadd "$@"
    (( $#found )) && print -rl -- "OFFER "$^found; }'
zpty -w z 'shown() { print; _main_complete; print -r -- OFFERED
    compstate[insert]=; compstate[list]=; }'
zpty -w z "print -r -- RE''ADY"
while zpty -r z line && [[ $line != *READY* ]]; do :; done
zpty -w -n z "$2"$'\x14'
while zpty -r z line; do
    line=${line%$'\n'}; line=${line%$'\r'}
    [[ $line == *OFFERED* ]] && break
    [[ $line == OFFER\ * ]] && print -r -- ${line#OFFER }
done
zpty -d z
'''


def bare(offer):
    """Without what stands behind a folder or a word, and what protects blanks."""
    return re.sub('(?<=[^/])/$', '', offer.rstrip(' ')).replace('\\', '')


class Completion:
    """In a folder with music and other things."""

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix='veldrin-completion-')
        self.addCleanup(shutil.rmtree, self.folder)
        self.environment = dict(os.environ, HOME=self.folder, LC_ALL='C.UTF-8', TERM='dumb',
                                XDG_CONFIG_HOME=self.folder, XDG_DATA_HOME=self.folder)
        self.music = os.path.join(self.folder, 'music')
        os.makedirs(os.path.join(self.music, 'an album'))
        for name in 'a song.mp3', 'b.FLAC', 'list.m3u8', 'notes.txt', 'take.wav':
            with open(os.path.join(self.music, name), 'w', encoding='utf-8'):
                pass

    def shell(self, *command):
        text = run(*command, cwd=self.music, env=self.environment)
        return {bare(line) for line in text.splitlines() if line}

    def test_all_options_and_no_others(self):
        options = {option.rstrip('=') for option in self.offers('veldrin --')} - {'--'}
        self.assertEqual(options, options_in(heads_of_help()))

    def test_values(self):
        self.assertEqual(self.offers('veldrin --loudness '), {'off', 'track', 'album'})
        self.assertEqual(self.offers('veldrin --loudness t'), {'track'})
        self.assertEqual(self.offers('veldrin --output '), {'auto', 'null', 'file:'})
        self.assertEqual(self.offers('veldrin --dir '), {'an album'})
        self.assertEqual(self.offers('veldrin --export l'), {'list.m3u8'})
        self.assertEqual(self.offers('veldrin --status '), {'json'})
        self.assertIn('+5', self.offers('veldrin --volume '))

    def test_commands_of_the_menu(self):
        menu = read(os.path.join(packaged.ROOT, 'menus', 'commandmenu.cpp'))
        keys = dict(re.findall(r'char16_t\* (k\w+) = u"(\w+)";',
                               read(os.path.join(packaged.ROOT, 'core/state/menukeys.h'))))
        # Rows that are plain items and do something: neither headers nor disabled, nor with others
        # below them.
        named = re.findall(r'\{u"[^-"][^"]*", u"[^"]*", menukeys::(\w+)\},', menu)
        wanted = {keys[name] for name in named} - {keys['kPlayback'], keys['kComponents']}
        self.assertGreater(len(wanted), 15)
        self.assertEqual(self.offers('veldrin --command '), wanted | {keys['kSkin'] + '1'})

    def test_music_and_folders(self):
        self.assertEqual(self.offers('veldrin '),
                         {'an album', 'a song.mp3', 'b.FLAC', 'list.m3u8', 'take.wav'})
        self.assertEqual(self.offers('veldrin --add l'), {'list.m3u8'})


class Bash(Completion, unittest.TestCase):
    def offers(self, line):
        # As the shell parts it before it asks.
        words = re.findall(r'[^\s=:]+|[=:]+', line) + ([''] if line.endswith(' ') else [])
        return self.shell('bash', '--norc', '-c', BASH, 'bash', source('completions/veldrin.bash'),
                          line, *words)

    def test_values_behind_an_equals_sign(self):
        self.assertEqual(self.offers('veldrin --loudness=t'), {'track'})
        self.assertEqual(self.offers('veldrin --output='), {'auto', 'null', 'file:'})
        self.assertEqual(self.offers('veldrin --dir='), {'an album'})
        self.assertEqual(self.offers('veldrin --lyrics-online=h'), {'http://', 'https://'})

    def test_a_file_for_the_sound(self):
        self.assertEqual(self.offers('veldrin --output file:t'), {'take.wav'})
        self.assertEqual(self.offers('veldrin --output=file:t'), {'take.wav'})

    def test_the_only_file_there_is(self):
        self.assertEqual(self.offers('veldrin n'), {'notes.txt'})

    def test_an_option_without_its_value_leaves_the_next_word_alone(self):
        self.assertIn('b.FLAC', self.offers('veldrin --lyrics-online '))
        self.assertIn('--dir', self.offers('veldrin --status --'))

    def test_behind_two_hyphens_there_are_paths(self):
        self.assertEqual(self.offers('veldrin -- --'), set())
        self.assertEqual(self.offers('veldrin -- --dir b'), {'b.FLAC'})


class Zsh(Completion, unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        # Where the shell keeps what it has read, which takes it a second.
        cls.kept = tempfile.mkdtemp(prefix='veldrin-zsh-')
        cls.addClassCleanup(shutil.rmtree, cls.kept)

    def offers(self, line):
        folder = os.path.abspath(source('completions'))
        return self.shell('zsh', '-f', '-c', ZSH, 'zsh', folder, line, self.kept + '/dump')


class Fish(Completion, unittest.TestCase):
    def offers(self, line):
        text = run('fish', '--no-config', '-c', 'source $argv[1]; complete -C $argv[2]',
                   source('completions/veldrin.fish'), line, cwd=self.music, env=self.environment)
        return {bare(offer.split('\t')[0]) for offer in text.splitlines()}


class Extensions(unittest.TestCase):
    def test_each_shell_knows_all_of_them(self):
        for name in 'veldrin.bash', '_veldrin', 'veldrin.fish':
            words = re.findall(r'\w+', read(source('completions/' + name)))
            self.assertEqual(set(playable_extensions() + LISTS) - set(words), set(), name)


if __name__ == '__main__':
    packaged.main()
