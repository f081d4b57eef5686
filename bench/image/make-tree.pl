#!/usr/bin/perl
# Makes a folder tree that resembles an installed Windows:
#   make-tree.pl FOLDER MEGABYTES EDITION KERNEL32
# Enough folders and empty files that the imaging tool reports each of its three phases, names with
# blanks, '&', '%' and letters of other scripts, and random contents up to the size asked for.
use strict;
use warnings;
use utf8;
use File::Copy qw(copy);
use File::Path qw(make_path);

my ($root, $megabytes, $edition, $kernel) = @ARGV;
binmode STDOUT, ':utf8';
open(my $random, '<:raw', '/dev/urandom') or die "no random source: $!\n";

sub put {
  my ($path, $bytes) = @_;
  utf8::encode($path);
  my ($folder) = "$root/$path" =~ m{(.*)/};
  make_path($folder);
  open(my $file, '>:raw', "$root/$path") or die "$path: $!\n";
  while ($bytes > 0) {
    my $count = read($random, my $chunk, $bytes < 1048576 ? $bytes : 1048576);
    print $file $chunk;
    $bytes -= $count;
  }
  close $file;
}

sub text {
  my ($path, $content) = @_;
  utf8::encode($path);
  my ($folder) = "$root/$path" =~ m{(.*)/};
  make_path($folder);
  open(my $file, '>:raw', "$root/$path") or die "$path: $!\n";
  print $file $content;
  close $file;
}

sub folder { make_path("$root/$_[0]") }

folder($_) for 'Windows/SysWOW64', 'Windows/Temp', 'Windows/Fonts', 'Users/Public/Documents', 'PerfLogs';
put('Windows/Boot/PCAT/bootmgr', 420_000);
put('Windows/Boot/EFI/bootmgfw.efi', 1_500_000);
put("Windows/Boot/EFI/$_/bootmgfw.efi.mui", 90_000) for 'en-US', 'de-DE', 'zh-CN';
put("Windows/System32/config/$_", 260_000) for qw(SYSTEM SOFTWARE SAM SECURITY DEFAULT BCD-Template);
put('Windows/System32/ntoskrnl.exe', 3_000_000);
put("Windows/System32/drivers/driver$_.sys", 20_000 + 100 * $_) for 1 .. 120;
put("Windows/System32/module$_.dll", 4_000 + 37 * $_) for 1 .. 700;
text("Windows/System32/DriverStore/FileRepository/inbox$_.inf_amd64/inbox$_.inf", "[Version]\r\nDriverVer=$_\r\n")
  for 1 .. 60;
text("Windows/WinSxS/amd64_component-$_/component.manifest", '') for 1 .. 2300;
text("Windows/WinSxS/Manifests/component-$_.manifest", "<assembly number=\"$_\"/>\n") for 1 .. 1500;
text('Program Files/Tom & Jerry 100% done/read me.txt', "names that scripts trip over\r\n");
text('Users/Default/Документы/日本語 ファイル.txt', "letters of other scripts\r\n");
text("Windows/$edition.xml", "<edition>$edition</edition>\r\n");
copy($kernel, "$root/Windows/System32/kernel32.dll") or die "kernel32.dll: $!\n";

my $rest = $megabytes * 1048576 - 30_000_000;
for (my $number = 1; $rest > 0; ++$number) {
  my $size = 2_000_000 + 500_000 * ($number % 13);
  $size = $rest if $size > $rest;
  put("Program Files/Package $number/data.bin", $size);
  $rest -= $size;
}
