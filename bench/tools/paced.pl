#!/usr/bin/perl
# Runs an imaging command and hands its output on the way the Windows build does it:
#   paced.pl [--text] [--pace MS] [--die PERCENT] [--die-in PHASE] -- COMMAND...
# --text puts 0x0D before every 0x0A byte, as text-mode output on Windows does, UTF-16 included.
# --pace stops the command for MS milliseconds after each progress update.
# --die kills it once the data phase has reported PERCENT, --die-in in the phase before or behind that one
# ("Creating", "metadata"), of which it tells as the command does for large images only.
use strict;
use warnings;

my ($text, $pace, $die, $die_in) = (0, 0, -1, '');
while (@ARGV) {
  my $option = shift @ARGV;
  last if $option eq '--';
  $text = 1 if $option eq '--text';
  $pace = shift @ARGV if $option eq '--pace';
  $die = shift @ARGV if $option eq '--die';
  $die_in = shift @ARGV if $option eq '--die-in';
}

my $pid = open(my $output, '-|', @ARGV) or die "cannot run $ARGV[0]: $!\n";
binmode $output;
binmode STDOUT;

sub emit {
  my ($bytes) = @_;
  $bytes =~ s/\n/\r\n/g if $text;
  while (length $bytes) {
    my $count = syswrite(STDOUT, $bytes) // exit 141;
    substr($bytes, 0, $count, '');
  }
}

sub die_now {
  kill 'KILL', $pid;
  exit 137;
}

sub die_telling {
  my ($phase) = @_;
  emit("\r$phase: 50 of 2500 (2%) done\r$phase: 100 of 2500 (4%) done\r$phase: 150");
  die_now();
}

while (sysread($output, my $chunk, 65536)) {
  for my $update (split /(?=\r)/, $chunk) {
    die_telling('Creating files') if $die_in eq 'Creating';
    if ($die_in eq 'metadata' && $update =~ /^(.*?)Done applying/s) {
      emit($1);
      die_telling('Applying metadata to files');
    }
    emit($update);
    die_now() if $die >= 0 && $update =~ /Extracting file data:.*\((\d+)%\)/ && $1 >= $die;
    if ($pace > 0 && $update =~ /%\)/) {
      kill 'STOP', $pid;
      select(undef, undef, undef, $pace / 1000);
      kill 'CONT', $pid;
    }
  }
}
close $output;
exit($? & 127 ? 128 + ($? & 127) : $? >> 8);
