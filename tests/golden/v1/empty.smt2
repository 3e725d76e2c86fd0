; Nothing is declared, asserted or asked.
