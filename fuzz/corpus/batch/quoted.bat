"/opt/Tessel Suite/recpad.exe"  <"/jobs/a ""b""/t1$.001"
exit
