def two_processes(tour): pass
