def embedded(tour): pass
